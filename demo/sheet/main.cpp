// Sheet.exe: finds the applet's sheet, turns its pages and asks for help from outside, as the scripts need it
// for their pictures and tests.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>
#include <windows.h>
// Needs windows.h.
#include <commctrl.h>
#include <prsht.h>

namespace {

constexpr const char* usage =
    "usage: Sheet wait    waits for the sheet, prints its place: WxH+X+Y\n"
    "       Sheet pages   prints how many pages it has\n"
    "       Sheet page N  shows page N, counted from 0, and prints its name\n"
    "       Sheet help    presses F1, prints the title of the help window, and closes it\n"
    "       Sheet close   presses Cancel and waits for the sheet to be gone\n";
constexpr ULONGLONG limit = 60'000; // milliseconds
constexpr DWORD pollInterval = 50;  // milliseconds

// A page is known by a control that no other page has: its caption depends on the language.
struct PageName
{
    int control;
    const char* name;
};
constexpr std::array<PageName, 6> pageNames{{{1003, "services"},
                                             {1061, "snmp-settings"},
                                             {1059, "storage"},
                                             {1033, "desktop-mgmt"},
                                             {1046, "process-monitor"},
                                             {1030, "remote-lumora"}}};

BOOL CALLBACK KeepSheet(HWND window, LPARAM found)
{
    const bool isSheet = IsWindowVisible(window) != FALSE &&
                         FindWindowExA(window, nullptr, WC_TABCONTROLA, nullptr) != nullptr;
    if (!isSheet)
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

// The sheet is the one window on this desktop that holds a row of tabs; null when it is not there.
HWND FindSheet()
{
    HWND sheet = nullptr;
    EnumWindows(&KeepSheet, reinterpret_cast<LPARAM>(&sheet));
    return sheet;
}

// Calls `isDone` until it says so; throws std::runtime_error, which says what was waited for, when that takes
// too long.
template <typename Condition>
void WaitUntil(Condition isDone, const char* what)
{
    const ULONGLONG started = GetTickCount64();
    while (!isDone()) {
        if (GetTickCount64() - started > limit)
            throw std::runtime_error(std::string("waited in vain for ") + what);
        Sleep(pollInterval);
    }
}

HWND RequireSheet()
{
    const HWND sheet = FindSheet();
    if (sheet == nullptr)
        throw std::runtime_error("there is no sheet");
    return sheet;
}

// Asks a window of another process, which may be busy or stuck.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, limit, &answer) == 0)
        throw std::runtime_error("the sheet does not answer");
    return static_cast<LRESULT>(answer);
}

int Wait()
{
    WaitUntil([] { return FindSheet() != nullptr; }, "the sheet");
    const HWND sheet = RequireSheet();
    Ask(sheet, WM_NCACTIVATE, TRUE); // without a window manager no window looks active, as its user sees it
    RECT place{};
    GetWindowRect(sheet, &place);
    std::printf("%ldx%ld+%ld+%ld\n", place.right - place.left, place.bottom - place.top, place.left,
                place.top);
    return EXIT_SUCCESS;
}

const char* NameOf(HWND page)
{
    const auto known = std::ranges::find_if(pageNames, [page](const PageName& candidate) {
        return GetDlgItem(page, candidate.control) != nullptr;
    });
    if (known == pageNames.end())
        throw std::runtime_error("the page is none of those known");
    return known->name;
}

HWND TabsOf(HWND sheet)
{
    return reinterpret_cast<HWND>(Ask(sheet, PSM_GETTABCONTROL));
}

int CountPages()
{
    std::printf("%d\n", static_cast<int>(Ask(TabsOf(RequireSheet()), TCM_GETITEMCOUNT)));
    return EXIT_SUCCESS;
}

int ShowPage(const std::string& number)
{
    const HWND sheet = RequireSheet();
    const unsigned long index = std::stoul(number);
    Ask(sheet, PSM_SETCURSEL, index);
    if (Ask(TabsOf(sheet), TCM_GETCURSEL) != static_cast<LRESULT>(index))
        throw std::runtime_error("the sheet does not show page " + number);
    std::puts(NameOf(reinterpret_cast<HWND>(Ask(sheet, PSM_GETCURRENTPAGEHWND))));
    return EXIT_SUCCESS;
}

HWND FindHelp()
{
    const HWND window = FindWindowA("HH Parent", nullptr);
    return window != nullptr && IsWindowVisible(window) != FALSE ? window : nullptr;
}

int ShowHelp()
{
    const HWND page = reinterpret_cast<HWND>(Ask(RequireSheet(), PSM_GETCURRENTPAGEHWND));
    PostMessageA(page, WM_KEYDOWN, VK_F1, 1);
    WaitUntil([] { return FindHelp() != nullptr; }, "the help window");
    const HWND help = FindHelp();
    std::array<char, 256> title{};
    GetWindowTextA(help, title.data(), static_cast<int>(title.size()));
    std::puts(title.data());
    PostMessageA(help, WM_CLOSE, 0, 0);
    WaitUntil([] { return FindHelp() == nullptr; }, "the end of the help window");
    return EXIT_SUCCESS;
}

int Close()
{
    const HWND sheet = RequireSheet();
    PostMessageA(sheet, WM_COMMAND, IDCANCEL, 0);
    WaitUntil([sheet] { return IsWindow(sheet) == FALSE; }, "the sheet's end");
    return EXIT_SUCCESS;
}

int Do(const std::vector<std::string>& arguments)
{
    const std::string verb = arguments.empty() ? "" : arguments[0];
    if (verb == "wait" && arguments.size() == 1)
        return Wait();
    if (verb == "pages" && arguments.size() == 1)
        return CountPages();
    if (verb == "page" && arguments.size() == 2)
        return ShowPage(arguments[1]);
    if (verb == "help" && arguments.size() == 1)
        return ShowHelp();
    if (verb == "close" && arguments.size() == 1)
        return Close();
    std::fputs(usage, stderr);
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return Do({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "Sheet: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
