// Fills lists quickly; for the pages that have them.
#pragma once

#include <afxwin.h>

// While it lives, nothing of `window` is painted. A list box redraws at every line that it is given: with
// thousands of them for seconds.
class RedrawPause
{
  public:
    // `window` is to outlive it.
    explicit RedrawPause(CWnd& window) : m_window(window) { m_window.SetRedraw(FALSE); }
    ~RedrawPause()
    {
        m_window.SetRedraw(TRUE);
        m_window.Invalidate();
    }
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;

  private:
    CWnd& m_window;
};
