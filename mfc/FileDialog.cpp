// CFileDialog.
#include "afxdlgs.h"
#include "HandlerScope.h"
#include "WndHelpers.h"

#include <algorithm>
#include <iterator>

IMPLEMENT_DYNAMIC(CFileDialog, CDialog)

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCSTR lpszDefExt, LPCSTR lpszFileName, DWORD dwFlags,
                         LPCSTR lpszFilter, CWnd* pParentWnd)
    : m_bOpenFileDialog(bOpenFileDialog), m_pParentWnd(pParentWnd), m_filter(lpszFilter)
{
    for (int bar = m_filter.Find('|'); bar >= 0; bar = m_filter.Find('|', bar))
        m_filter.SetAt(bar, '\0');
    ::lstrcpynA(m_path, lpszFileName == nullptr ? "" : lpszFileName, static_cast<int>(std::size(m_path)));
    m_ofn.lStructSize = sizeof m_ofn;
    m_ofn.lpstrFilter = m_filter.IsEmpty() ? nullptr : static_cast<LPCSTR>(m_filter);
    m_ofn.lpstrDefExt = lpszDefExt;
    m_ofn.lpstrFile = m_path;
    m_ofn.nMaxFile = static_cast<DWORD>(std::size(m_path));
    m_ofn.Flags = dwFlags | OFN_EXPLORER;
}

INT_PTR CFileDialog::DoModal()
{
    CHandlerScope scope(*this);
    m_ofn.hwndOwner = AfxOwnerFor(m_pParentWnd);
    m_ofn.hInstance = AfxGetResourceHandle();
    const BOOL chosen = m_bOpenFileDialog ? ::GetOpenFileNameA(&m_ofn) : ::GetSaveFileNameA(&m_ofn);
    scope.Rethrow();
    return chosen ? IDOK : IDCANCEL;
}

void CFileDialog::EndFailedLoop()
{
    // The dialog is the system's; it is whatever the owner has last put in front of itself.
    const HWND dialog = ::GetLastActivePopup(m_ofn.hwndOwner);
    if (dialog != nullptr && dialog != m_ofn.hwndOwner)
        ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
}
