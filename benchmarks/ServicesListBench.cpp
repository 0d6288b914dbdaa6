// How long the Services page takes to open with 2,000 sub-agents in one service, beside two yardsticks. Each
// fills two list boxes with the same texts, and reads each text
// - as whoever finds the keys closed must at the least: listed once, opened, read into a buffer, closed;
// - as the registry accessor does: listed twice, opened by its path, its size asked for, read, closed.
// The accessor's calls are how it notices every refusal. Succeeds when the page takes at most one and a half
// times as long as the first.
#include "machine/AgentMachine.h"
#include "Measure.h"
#include "pages/ServicesPage.h"
#include "sysaccess/core/RegistryKey.h"

#include <afxdlgs.h>
#include <array>
#include <chrono>
#include <cstdio>

namespace {

constexpr int agentCount = 2000;
constexpr double limit = 1.5;

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

// The reads of whoever finds the keys closed; less than this leaves out a text or a key.
double ReadClosedKeys(const AgentMachine& machine)
{
    return TimeOf([&] {
        HKEY parent = nullptr;
        RegOpenKeyA(HKEY_LOCAL_MACHINE, machine.Service("VtMgHost").Path().c_str(), &parent);
        std::array<char, 261> name{};
        for (DWORD i = 0; RegEnumKeyA(parent, i, name.data(), name.size()) == ERROR_SUCCESS; ++i) {
            HKEY key = nullptr;
            RegOpenKeyA(parent, name.data(), &key);
            std::array<char, 64> text{};
            DWORD size = text.size();
            RegQueryValueExA(key, "DisplayName", nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()),
                             &size);
            RegCloseKey(key);
        }
        RegCloseKey(parent);
    });
}

// The page's reads, and nothing else.
double ReadThroughAccessor(const AgentMachine& machine)
{
    return TimeOf([&] {
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

// The filling of both yardsticks. Texts and list boxes are there before the clock runs.
class Lists
{
  public:
    Lists()
    {
        for (int i = 0; i < agentCount; ++i)
            m_texts.push_back(AgentName(i) + " Agent");
        for (HWND& list : m_lists)
            list = CreateWindowA("LISTBOX", "", WS_POPUP | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY, 0, 0, 150,
                                 150, nullptr, nullptr, nullptr, nullptr);
    }
    ~Lists()
    {
        for (const HWND list : m_lists)
            DestroyWindow(list);
    }
    Lists(const Lists&) = delete;
    Lists& operator=(const Lists&) = delete;

    double Fill()
    {
        for (const HWND list : m_lists)
            SendMessageA(list, LB_RESETCONTENT, 0, 0);
        return TimeOf([this] {
            for (const HWND list : m_lists)
                SendMessageA(list, WM_SETREDRAW, FALSE, 0);
            for (std::size_t i = 0; i < agentCount; ++i)
                Append(m_lists[i % 2], m_texts[i].c_str(), i);
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

    std::vector<std::string> m_texts;
    std::array<HWND, 2> m_lists{};
};

// Milliseconds of each round. The parts are measured in turn, so that a change in the machine's pace meets
// all.
struct Rounds
{
    std::vector<double> loading;
    std::vector<double> showing;
    std::vector<double> closedKeys;
    std::vector<double> accessor;
    std::vector<double> filling;
};

Rounds MeasureRounds(const AgentMachine& machine)
{
    Rounds rounds;
    Lists lists;
    OpenPage(); // loads libraries and registers window classes
    for (int round = 0; round < measuredRounds; ++round) {
        const Opening opening = OpenPage();
        rounds.loading.push_back(opening.loading);
        rounds.showing.push_back(opening.showing);
        rounds.accessor.push_back(ReadThroughAccessor(machine));
        rounds.closedKeys.push_back(ReadClosedKeys(machine));
        rounds.filling.push_back(lists.Fill());
    }
    return rounds;
}

// How many times the yardstick with these reads the page takes.
double Compare(const char* yardstick, double page, double reading, double filling)
{
    const double ratio = page / (reading + filling);
    std::printf("%.2f times %s, %.1f ms: reading %.1f, filling %.1f\n", ratio, yardstick, reading + filling,
                reading, filling);
    return ratio;
}

} // namespace

int main()
{
    const AgentMachine machine;
    FillMachine(machine);
    const Rounds rounds = MeasureRounds(machine);
    const double loading = Median(rounds.loading);
    const double showing = Median(rounds.showing);
    const double filling = Median(rounds.filling);
    const double page = loading + showing;
    std::printf("page %.1f ms: loading %.1f, showing %.1f\n", page, loading, showing);
    const double ratio = Compare("the least with closed keys", page, Median(rounds.closedKeys), filling);
    Compare("the accessor's reads", page, Median(rounds.accessor), filling);
    std::printf("limit %.2f times the first\n", limit);
    return ratio <= limit ? 0 : 1;
}
