// F1 anywhere in the sheet asks for the active page's help.
#pragma once

#include "sysaccess/core/Handles.h"

#include <windows.h>

// Sets the window that the F1 hook takes for the sheet. Called by the sheet as soon as it has a window, and
// with null when it loses it: the hook may outlive the window.
void RecordSheetWindow(HWND sheet);

// Ends a hook; for UniqueHook.
inline void CloseHook(HHOOK hook)
{
    UnhookWindowsHookEx(hook);
}
using UniqueHook = UniqueHandle<HHOOK, CloseHook>;

// While one of these lives, F1 without Shift or Ctrl in a dialog of the calling thread posts WM_COMMAND
// ID_HELP to the recorded sheet. The dialog sees the key all the same. A host may open the applet again while
// its sheet is up; then the keys belong to the new sheet until that is gone.
class HelpKeyHook
{
  public:
    HelpKeyHook();
    ~HelpKeyHook();
    HelpKeyHook(const HelpKeyHook&) = delete;
    HelpKeyHook& operator=(const HelpKeyHook&) = delete;

  private:
    static LRESULT CALLBACK FilterMessage(int code, WPARAM wParam, LPARAM lParam);

    HWND m_outerSheet;
    UniqueHook m_hook;
};
