// A small applet in plain Win32, the subject on which the applet driver itself is tested: two pages, saved to
// HKEY_LOCAL_MACHINE\SOFTWARE\vtnmgmt-sample, a message box, a dialog and an F1 filter.
#include "resource.h"

#include <array>
#include <cstring>
#include <stdexcept>
#include <string>
#include <windows.h>

// These need windows.h before them.
#include <commctrl.h>
#include <cpl.h>

namespace {

constexpr char settingsPath[] = "SOFTWARE\\vtnmgmt-sample";

HWND g_sheet = nullptr;

HINSTANCE Library()
{
    return GetModuleHandleA("sample.cpl");
}

void SaveCheck(HWND page, int id, const char* name)
{
    const DWORD value = IsDlgButtonChecked(page, id);
    RegSetKeyValueA(HKEY_LOCAL_MACHINE, &settingsPath[0], name, REG_DWORD, &value, sizeof value);
}

INT_PTR Answer(HWND page, LONG_PTR result)
{
    SetWindowLongPtrA(page, DWLP_MSGRESULT, result);
    return TRUE;
}

void Say(HWND page, const char* text)
{
    MessageBoxA(page, text, "Sample", MB_OK);
}

// The sheet stays in front of a page whose edit control says "stay".
bool Stays(HWND page)
{
    std::array<char, 16> text{};
    GetDlgItemTextA(page, IDC_FIRST_EDIT, text.data(), static_cast<int>(text.size()));
    return std::strcmp(text.data(), "stay") == 0;
}

INT_PTR CALLBACK MoreProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM /*lParam*/)
{
    if (message != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL))
        return FALSE;
    EndDialog(dialog, LOWORD(wParam));
    return TRUE;
}

INT_PTR FirstCommand(HWND page, int id)
{
    if (id == IDC_FIRST_ASK)
        SetDlgItemTextA(page, IDC_FIRST_EDIT,
                        MessageBoxA(page, "Go on?", "Sample", MB_YESNO) == IDYES ? "yes" : "no");
    else if (id == IDC_FIRST_MORE)
        DialogBoxParamA(Library(), MAKEINTRESOURCEA(IDD_MORE), GetParent(page), &MoreProcedure, 0);
    return TRUE;
}

INT_PTR FirstNotification(HWND page, UINT code)
{
    switch (code) {
    case PSN_KILLACTIVE:
        return Answer(page, Stays(page) ? TRUE : FALSE);
    case PSN_APPLY:
        SaveCheck(page, IDC_FIRST_CHECK, "First");
        return Answer(page, PSNRET_NOERROR);
    case PSN_HELP:
        Say(page, "Help about First");
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK FirstProcedure(HWND page, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND)
        return FirstCommand(page, LOWORD(wParam));
    return message == WM_NOTIFY ? FirstNotification(page, reinterpret_cast<const NMHDR*>(lParam)->code)
                                : FALSE;
}

void FillSecond(HWND page)
{
    for (const char* text : {"one", "two", "three"}) {
        SendDlgItemMessageA(page, IDC_SECOND_LIST, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        SendDlgItemMessageA(page, IDC_SECOND_COMBO, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
}

// The list and the combo box show the same row, whichever was chosen from.
void FollowSelection(HWND page, WPARAM command)
{
    const LRESULT row = SendDlgItemMessageA(
        page, LOWORD(command), LOWORD(command) == IDC_SECOND_LIST ? LB_GETCURSEL : CB_GETCURSEL, 0, 0);
    SendDlgItemMessageA(page, IDC_SECOND_LIST, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    SendDlgItemMessageA(page, IDC_SECOND_COMBO, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
}

INT_PTR CALLBACK SecondProcedure(HWND page, UINT message, WPARAM wParam, LPARAM lParam)
{
    static_assert(LBN_SELCHANGE == CBN_SELCHANGE);
    if (message == WM_INITDIALOG)
        FillSecond(page);
    else if (message == WM_COMMAND && HIWORD(wParam) == LBN_SELCHANGE)
        FollowSelection(page, wParam);
    else if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == PSN_APPLY)
        SaveCheck(page, IDC_SECOND_CHECK, "Second");
    return message == WM_INITDIALOG;
}

// F1 without Shift asks the sheet for help.
LRESULT CALLBACK FilterF1(int code, WPARAM wParam, LPARAM lParam)
{
    const auto* message = reinterpret_cast<const MSG*>(lParam);
    if (code != MSGF_DIALOGBOX || message->message != WM_KEYDOWN || message->wParam != VK_F1 ||
        GetKeyState(VK_SHIFT) < 0)
        return CallNextHookEx(nullptr, code, wParam, lParam);
    PostMessageA(g_sheet, WM_COMMAND, IDHELP, 0);
    return 0;
}

int CALLBACK RememberSheet(HWND sheet, UINT message, LPARAM /*lParam*/)
{
    if (message == PSCB_INITIALIZED)
        g_sheet = sheet;
    return 0;
}

PROPSHEETPAGEA MakePage(int dialog, DLGPROC procedure)
{
    PROPSHEETPAGEA page{};
    page.dwSize = sizeof page;
    page.dwFlags = PSP_HASHELP;
    page.hInstance = Library();
    page.pszTemplate = MAKEINTRESOURCEA(dialog);
    page.pfnDlgProc = procedure;
    return page;
}

void RunSheet(HWND owner)
{
    const std::string commandLine = GetCommandLineA();
    if (commandLine.find("/throw") != std::string::npos)
        throw std::runtime_error("thrown by the sample");
    if (commandLine.find("/none") != std::string::npos)
        return;
    const std::array pages{MakePage(IDD_FIRST, &FirstProcedure), MakePage(IDD_SECOND, &SecondProcedure)};
    PROPSHEETHEADERA header{};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_USECALLBACK | PSH_HASHELP;
    header.hwndParent = owner;
    header.hInstance = Library();
    header.pszCaption = "Sample sheet";
    header.nPages = commandLine.find("/single") == std::string::npos ? 2 : 1;
    header.ppsp = pages.data();
    header.pfnCallback = &RememberSheet;
    const HHOOK hook = SetWindowsHookExA(WH_MSGFILTER, &FilterF1, nullptr, GetCurrentThreadId());
    PropertySheetA(&header);
    UnhookWindowsHookEx(hook);
}

} // namespace

extern "C" __declspec(dllexport) LONG CALLBACK
    CPlApplet(HWND owner, UINT message, LPARAM first, LPARAM second);

LONG CALLBACK CPlApplet(HWND owner, UINT message, LPARAM /*first*/, LPARAM second)
{
    switch (message) {
    case CPL_INIT:
    case CPL_GETCOUNT:
        return 1;
    case CPL_INQUIRE:
        *reinterpret_cast<CPLINFO*>(second) = {IDI_SAMPLE, IDS_SAMPLE_NAME, IDS_SAMPLE_INFO, 7};
        return 0;
    case CPL_DBLCLK:
        RunSheet(owner);
        return static_cast<LONG>(second);
    default:
        return 0;
    }
}
