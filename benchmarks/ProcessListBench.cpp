// How long the Process Monitor page takes to open with 5,000 running processes, once without a configuration
// and once with all of them configured, beside adding the same texts to a sorted list box with redrawing off.
// Succeeds when the page takes at most 1.3 times as long.
#include "machine/TaskListScript.h"
#include "Measure.h"
#include "pages/ProcMonPage.h"
#include "support/TestRegistry.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <stdexcept>

namespace {

constexpr int processCount = 5000;
constexpr double limit = 1.3;

using Clock = std::chrono::steady_clock;

// In an order that is not the list's.
std::vector<std::string> ProcessNames()
{
    std::vector<std::string> names;
    for (int i = 0; i < processCount; ++i)
        names.push_back("process" + std::to_string(i) + ".exe");
    std::shuffle(names.begin(), names.end(), std::mt19937(1));
    return names;
}

// A sheet with this page alone, which notes when it is there and closes.
class OpeningSheet : public CPropertySheet
{
  public:
    OpeningSheet() : CPropertySheet("Benchmark", nullptr, 0) { AddPage(&m_page); }

    BOOL OnInitDialog() override
    {
        const BOOL result = CPropertySheet::OnInitDialog();
        m_opened = Clock::now();
        PostMessage(WM_COMMAND, IDCANCEL);
        return result;
    }

    [[nodiscard]] Clock::time_point Opened() const { return m_opened; }

  private:
    ProcMonPage m_page;
    Clock::time_point m_opened;
};

double OpenPage()
{
    const auto start = Clock::now();
    OpeningSheet sheet;
    if (sheet.DoModal() != IDCANCEL)
        throw std::runtime_error("the page does not open");
    return Milliseconds(sheet.Opened() - start).count();
}

double FillListBox(const std::vector<std::string>& texts)
{
    const HWND list = CreateWindowA(
        "LISTBOX", "", WS_POPUP | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY | LBS_SORT | LBS_USETABSTOPS, 0, 0,
        200, 150, nullptr, nullptr, nullptr, nullptr);
    const auto start = Clock::now();
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    for (const std::string& text : texts)
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
    const double time = Milliseconds(Clock::now() - start).count();
    DestroyWindow(list);
    return time;
}

// Measures both in turn; the texts are those that the page shows.
bool Compare(const char* name, const std::vector<std::string>& texts)
{
    const auto [page, list] = MeasureInTurn(&OpenPage, [&] { return FillListBox(texts); });
    const double ratio = page / list;
    std::printf("%s: page %.1f ms, list box %.1f ms: %.2f times, limit %.1f\n", name, page, list, ratio,
                limit);
    return ratio <= limit;
}

std::vector<std::string> WithText(const std::vector<std::string>& names, const std::string& text)
{
    std::vector<std::string> texts;
    for (const std::string& name : names)
        texts.push_back(name + "\t" + text);
    return texts;
}

support::Bytes Configuration(const std::vector<std::string>& names)
{
    support::Bytes stored;
    for (const std::string& name : names) {
        stored.push_back(ProcessOptionStart);
        stored.insert(stored.end(), name.c_str(), name.c_str() + name.size() + 1);
    }
    return stored;
}

} // namespace

int main()
try {
    const support::SavedKey parameters("SYSTEM\\CurrentControlSet\\Services\\VtMgHOST\\Parameters");
    parameters.Clear();
    support::LibraryScript libraries(GetModuleHandleA(nullptr));
    support::TaskListScript tasks(libraries);
    tasks.names = ProcessNames();
    const bool isRunningFast = Compare("running", WithText(tasks.names, "None"));
    parameters.SetBinary("ProcMon", Configuration(tasks.names));
    const bool isConfiguredFast = Compare("running and configured", WithText(tasks.names, "Start"));
    return isRunningFast && isConfiguredFast ? 0 : 1;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 2;
}
