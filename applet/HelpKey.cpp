// The message-filter hook for F1.
#include "applet/HelpKey.h"

#include <afxdlgs.h>
#include <utility>

namespace {

HWND sheetWindow = nullptr;

bool IsDown(int virtualKey)
{
    return GetKeyState(virtualKey) < 0;
}

bool IsHelpKey(const MSG& message)
{
    return message.message == WM_KEYDOWN && message.wParam == VK_F1 && !IsDown(VK_SHIFT) &&
           !IsDown(VK_CONTROL);
}

} // namespace

void RecordSheetWindow(HWND sheet)
{
    sheetWindow = sheet;
}

HelpKeyHook::HelpKeyHook()
    : m_outerSheet(std::exchange(sheetWindow, nullptr)),
      m_hook(SetWindowsHookExA(WH_MSGFILTER, &FilterMessage, nullptr, GetCurrentThreadId()))
{
}

HelpKeyHook::~HelpKeyHook()
{
    // A host may have destroyed it meanwhile, and its handle may be another window's by now.
    sheetWindow = m_outerSheet != nullptr && IsWindow(m_outerSheet) != FALSE ? m_outerSheet : nullptr;
}

LRESULT CALLBACK HelpKeyHook::FilterMessage(int code, WPARAM wParam, LPARAM lParam)
{
    const auto& message = *reinterpret_cast<const MSG*>(lParam);
    if (sheetWindow == nullptr || code != MSGF_DIALOGBOX || !IsHelpKey(message))
        return CallNextHookEx(nullptr, code, wParam, lParam); // the system knows which hook calls
    PostMessageA(sheetWindow, WM_COMMAND, ID_HELP, 0);
    return 0;
}
