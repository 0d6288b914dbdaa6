// How an object gets hold of a window that Windows is creating. For the library's own sources only.
#pragma once

#include "ThreadState.h"

// Binds an object to the next window of a class that this thread creates, before the window's first message.
class CCreationHook
{
  public:
    // Waits from now on; the class name is kept by address.
    CCreationHook(CWnd& window, LPCSTR className);
    ~CCreationHook();
    CCreationHook(const CCreationHook&) = delete;
    CCreationHook& operator=(const CCreationHook&) = delete;

    // False when Windows refuses the hook: the object would never learn of its window, so none must be made.
    [[nodiscard]] bool IsInstalled() const { return m_hook != nullptr; }

  private:
    static LRESULT CALLBACK CbtProc(int code, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] bool Awaits(HWND hWnd) const;
    bool Take(HWND hWnd);
    void End();

    CThreadState& m_state;
    CWnd& m_window;
    LPCSTR m_className;
    HHOOK m_hook;
};
