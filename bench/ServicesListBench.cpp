// How long the Services page takes to open with 2,000 sub-agents in one service, beside two yardsticks: the
// least that shows the same (filling two list boxes with the same texts and reading each text once from a key
// that is open), and the same with the reads as the registry accessor makes them (it lists the keys twice,
// opens and closes each, and asks for the size of each text first). Succeeds when the page takes at most a
// quarter longer than the latter: what it adds of its own must not count.
#include "pages/ServicesPage.h"
#include "support/AgentMachine.h"
#include "sysaccess/RegistryKey.h"

#include <afxdlgs.h>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

namespace {

constexpr int agentCount = 2000;
constexpr int roundCount = 9;
constexpr double limit = 1.25;

using Milliseconds = std::chrono::duration<double, std::milli>;

template <typename Action>
double Measure(Action action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> times)
{
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

std::string AgentName(int number)
{
    return "VTN" + std::to_string(10000 + number);
}

// A machine whose main service has all the sub-agents; every other one is active.
void FillMachine(const AgentMachine& machine)
{
    std::vector<std::string> active;
    for (int i = 0; i < agentCount; ++i) {
        machine.Service("VtMgHost").Subkey(AgentName(i)).SetString("DisplayName", AgentName(i) + " Agent");
        if (i % 2 == 0)
            active.push_back(AgentName(i));
    }
    machine.SetActive("VtMgHost", active);
}

// A sheet with this page alone, which notes when it is there and closes.
class OpeningSheet : public CPropertySheet
{
  public:
    OpeningSheet() : CPropertySheet("Benchmark", nullptr, 0) { AddPage(&m_page); }

    BOOL OnInitDialog() override
    {
        const BOOL result = CPropertySheet::OnInitDialog();
        m_opened = std::chrono::steady_clock::now();
        PostMessage(WM_COMMAND, IDCANCEL);
        return result;
    }

    [[nodiscard]] std::chrono::steady_clock::time_point Opened() const { return m_opened; }

  private:
    CVtnServicesPropPage m_page;
    std::chrono::steady_clock::time_point m_opened;
};

// The page's reads, and nothing else.
double ReadThroughAccessor(const AgentMachine& machine)
{
    return Measure([&] {
        const std::string path = machine.Service("VtMgHost").Path();
        std::vector<std::string> names;
        CRegistryKey(HKEY_LOCAL_MACHINE, path.c_str()).EnumSubkeys(names);
        for (const std::string& name : names) {
            DWORD type = REG_SZ;
            RegistryData data;
            DWORD size = 0;
            CRegistryKey(HKEY_LOCAL_MACHINE, (path + '\\' + name).c_str())
                .QueryValue("DisplayName", type, data, size);
        }
    });
}

struct Opening
{
    double loading; // of the settings, in the page's constructor
    double showing;
};

Opening OpenPage()
{
    const auto start = std::chrono::steady_clock::now();
    OpeningSheet sheet;
    const auto loaded = std::chrono::steady_clock::now();
    sheet.DoModal();
    return {Milliseconds(loaded - start).count(), Milliseconds(sheet.Opened() - loaded).count()};
}

// The yardstick. Keys and list boxes are there before the clock runs.
class LeastWork
{
  public:
    explicit LeastWork(const AgentMachine& machine)
    {
        for (int i = 0; i < agentCount; ++i)
            RegOpenKeyA(HKEY_LOCAL_MACHINE, machine.Service("VtMgHost").Subkey(AgentName(i)).Path().c_str(),
                        &m_keys[static_cast<std::size_t>(i)]);
        for (HWND& list : m_lists)
            list = CreateWindowA("LISTBOX", "", WS_POPUP | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY, 0, 0, 150,
                                 150, nullptr, nullptr, nullptr, nullptr);
    }
    ~LeastWork()
    {
        for (const HKEY key : m_keys)
            RegCloseKey(key);
        for (const HWND list : m_lists)
            DestroyWindow(list);
    }
    LeastWork(const LeastWork&) = delete;
    LeastWork& operator=(const LeastWork&) = delete;

    double ReadTexts()
    {
        return Measure([this] {
            for (std::size_t i = 0; i < agentCount; ++i) {
                DWORD size = sizeof m_texts[i];
                RegQueryValueExA(m_keys[i], "DisplayName", nullptr, nullptr,
                                 reinterpret_cast<BYTE*>(m_texts[i].data()), &size);
            }
        });
    }

    double FillLists()
    {
        for (const HWND list : m_lists)
            SendMessageA(list, LB_RESETCONTENT, 0, 0);
        return Measure([this] {
            for (const HWND list : m_lists)
                SendMessageA(list, WM_SETREDRAW, FALSE, 0);
            for (std::size_t i = 0; i < agentCount; ++i)
                Append(m_lists[i % 2], m_texts[i].data(), i);
            for (const HWND list : m_lists)
                SendMessageA(list, WM_SETREDRAW, TRUE, 0);
        });
    }

  private:
    static void Append(HWND list, const char* text, std::size_t data)
    {
        const LRESULT row =
            SendMessageA(list, LB_INSERTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text));
        SendMessageA(list, LB_SETITEMDATA, static_cast<WPARAM>(row), static_cast<LPARAM>(data));
    }

    std::array<HKEY, agentCount> m_keys{};
    std::array<std::array<char, 64>, agentCount> m_texts{};
    std::array<HWND, 2> m_lists{};
};

} // namespace

int main()
{
    const AgentMachine machine;
    FillMachine(machine);
    const auto leastWork = std::make_unique<LeastWork>(machine);
    std::vector<double> loading;
    std::vector<double> showing;
    std::vector<double> reading;
    std::vector<double> accessor;
    std::vector<double> filling;
    OpenPage(); // loads libraries and registers window classes
    for (int round = 0; round < roundCount; ++round) {
        const Opening opening = OpenPage();
        loading.push_back(opening.loading);
        showing.push_back(opening.showing);
        accessor.push_back(ReadThroughAccessor(machine));
        reading.push_back(leastWork->ReadTexts());
        filling.push_back(leastWork->FillLists());
    }
    const double page = Median(loading) + Median(showing);
    const double least = Median(reading) + Median(filling);
    const double withAccessor = Median(accessor) + Median(filling);
    std::printf("page %.1f ms: loading %.1f, showing %.1f\n", page, Median(loading), Median(showing));
    std::printf("%.2f times the least, %.1f ms: reading %.1f, filling %.1f\n", page / least, least,
                Median(reading), Median(filling));
    std::printf("%.2f times that with the accessor's reads, %.1f ms: reading %.1f; limit %.2f\n",
                page / withAccessor, withAccessor, Median(accessor), limit);
    return page / withAccessor <= limit ? 0 : 1;
}
