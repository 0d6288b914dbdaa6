// CWnd: texts, styles, place and the wait cursor.
#include "afxwin.h"
#include "ThreadState.h"
#include "WndHelpers.h"

#include <algorithm>

CWnd* CWnd::GetDlgItem(int nID) const
{
    return FromHandle(::GetDlgItem(m_hWnd, nID));
}

CWnd* CWnd::GetOwner() const
{
    const HWND owner = ::GetWindow(m_hWnd, GW_OWNER);
    return owner == nullptr ? GetParent() : FromHandle(owner);
}

CWnd* CWnd::SetParent(CWnd* pWndNewParent)
{
    return FromHandle(::SetParent(m_hWnd, AfxHandleOf(pWndNewParent)));
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ::SendMessageA(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ::PostMessageA(m_hWnd, message, wParam, lParam);
}

int CWnd::GetWindowText(LPSTR lpszString, int nMaxCount) const
{
    return ::GetWindowTextA(m_hWnd, lpszString, nMaxCount);
}

void AfxReadText(HWND window, CString& text)
{
    const int length = ::GetWindowTextLengthA(window);
    ::GetWindowTextA(window, text.GetBuffer(length + 1), length + 1);
    text.ReleaseBuffer();
}

void CWnd::GetWindowText(CString& rString) const
{
    AfxReadText(m_hWnd, rString);
}

int CWnd::GetDlgItemText(int nID, CString& rString) const
{
    rString.Empty();
    if (const HWND control = ::GetDlgItem(m_hWnd, nID); control != nullptr)
        AfxReadText(control, rString);
    return rString.GetLength();
}

DWORD CWnd::GetStyle() const
{
    return static_cast<DWORD>(::GetWindowLongPtrA(m_hWnd, GWL_STYLE));
}

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    const DWORD before = GetStyle();
    const DWORD after = (before & ~dwRemove) | dwAdd;
    if (before == after)
        return FALSE;
    ::SetWindowLongPtrA(m_hWnd, GWL_STYLE, static_cast<LONG_PTR>(after));
    if (nFlags != 0)
        SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | nFlags);
    return TRUE;
}

BOOL CWnd::SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
{
    return ::SetWindowPos(m_hWnd, AfxHandleOf(pWndInsertAfter), x, y, cx, cy, nFlags);
}

void CWnd::MoveWindow(const RECT& rect, BOOL bRepaint)
{
    const CRect place(rect);
    ::MoveWindow(m_hWnd, place.left, place.top, place.Width(), place.Height(), bRepaint);
}

void CWnd::ScreenToClient(LPRECT lpRect) const
{
    ::MapWindowPoints(HWND_DESKTOP, m_hWnd, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CWnd::ClientToScreen(LPRECT lpRect) const
{
    ::MapWindowPoints(m_hWnd, HWND_DESKTOP, reinterpret_cast<LPPOINT>(lpRect), 2);
}

BOOL CWnd::RedrawWindow(UINT flags)
{
    return ::RedrawWindow(m_hWnd, nullptr, nullptr, flags);
}

void CWnd::CheckRadioButton(int nIDFirst, int nIDLast, int nIDCheck)
{
    ::CheckRadioButton(m_hWnd, nIDFirst, nIDLast, nIDCheck);
}

int CWnd::GetCheckedRadioButton(int nIDFirst, int nIDLast) const
{
    for (int id = nIDFirst; id <= nIDLast; ++id)
        if (IsDlgButtonChecked(id) != BST_UNCHECKED)
            return id;
    return 0;
}

// The work area of the monitor that most of a window lies on.
static CRect WorkAreaAt(HWND window)
{
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    ::GetMonitorInfoA(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    return info.rcWork;
}

// What a window is centred over, in the coordinates that SetWindowPos takes for it.
static CRect CenterOf(HWND window, HWND over, bool isChild)
{
    CRect area;
    if (isChild) {
        ::GetClientRect(over, area);
        return area;
    }
    if (over == nullptr || !::IsWindowVisible(over) || ::IsIconic(over))
        return WorkAreaAt(over == nullptr ? window : over);
    ::GetWindowRect(over, area);
    return area;
}

// Moves a span of this length to lie inside another; one that is too long keeps its start visible.
static LONG KeepInside(LONG start, LONG length, LONG first, LONG last)
{
    return std::max(std::min(start, last - length), first);
}

void CWnd::CenterWindow(CWnd* pAlternateOwner)
{
    const bool isChild = (GetStyle() & WS_CHILD) != 0;
    HWND over = AfxHandleOf(pAlternateOwner);
    if (over == nullptr)
        over = isChild ? ::GetParent(m_hWnd) : ::GetWindow(m_hWnd, GW_OWNER);
    CRect own;
    GetWindowRect(own);
    const CRect area = CenterOf(m_hWnd, over, isChild);
    CPoint corner(area.CenterPoint().x - own.Width() / 2, area.CenterPoint().y - own.Height() / 2);
    if (!isChild) {
        const CRect work = WorkAreaAt(over == nullptr ? m_hWnd : over);
        corner.x = KeepInside(corner.x, own.Width(), work.left, work.right);
        corner.y = KeepInside(corner.y, own.Height(), work.top, work.bottom);
    }
    SetWindowPos(nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

static void ShowWaitCursor()
{
    ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
}

void CWnd::BeginWaitCursor()
{
    CThreadState& state = CThreadState::Get();
    if (state.m_waitCursors++ == 0)
        state.m_cursorBefore = ::GetCursor();
    ShowWaitCursor();
}

void CWnd::EndWaitCursor()
{
    CThreadState& state = CThreadState::Get();
    if (state.m_waitCursors == 0)
        return;
    if (--state.m_waitCursors == 0)
        ::SetCursor(state.m_cursorBefore);
}

void CWnd::RestoreWaitCursor()
{
    if (CThreadState::Get().m_waitCursors > 0)
        ShowWaitCursor();
}
