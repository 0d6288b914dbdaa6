// The control classes.
#include "afxctl.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)

// Positions travel in WPARAMs, where -1 has all bits set.
static WPARAM AsWParam(int number)
{
    return static_cast<WPARAM>(static_cast<INT_PTR>(number));
}

void CEdit::SetSel(int nStartChar, int nEndChar, BOOL bNoScroll)
{
    SendMessage(EM_SETSEL, AsWParam(nStartChar), nEndChar);
    if (!bNoScroll)
        SendMessage(EM_SCROLLCARET);
}

void CEdit::GetSel(int& nStartChar, int& nEndChar) const
{
    DWORD start = 0;
    DWORD end = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    nStartChar = static_cast<int>(start);
    nEndChar = static_cast<int>(end);
}

int AfxAskList(const CWnd& list, UINT message, int index, LPCSTR text)
{
    return static_cast<int>(list.SendMessage(message, AsWParam(index), reinterpret_cast<LPARAM>(text)));
}

DWORD_PTR CListBox::GetItemData(int nIndex) const
{
    return static_cast<DWORD_PTR>(SendMessage(LB_GETITEMDATA, AsWParam(nIndex)));
}

int CListBox::SetItemData(int nIndex, DWORD_PTR dwItemData)
{
    return static_cast<int>(SendMessage(LB_SETITEMDATA, AsWParam(nIndex), static_cast<LPARAM>(dwItemData)));
}

void CListBox::GetText(int nIndex, CString& rString) const
{
    const int length = std::max(AfxAskList(*this, LB_GETTEXTLEN, nIndex), 0);
    // In double-byte code pages the length asked for may be more than what is copied.
    const int copied = AfxAskList(*this, LB_GETTEXT, nIndex, rString.GetBuffer(length + 1));
    rString.ReleaseBuffer(std::max(copied, 0));
}

UINT CListBox::ItemFromPoint(CPoint pt, BOOL& bOutside) const
{
    const auto found = static_cast<DWORD>(SendMessage(LB_ITEMFROMPOINT, 0, MAKELPARAM(pt.x, pt.y)));
    bOutside = HIWORD(found) != 0;
    return LOWORD(found);
}

int CListBox::GetItemRect(int nIndex, LPRECT lpRect) const
{
    return static_cast<int>(SendMessage(LB_GETITEMRECT, AsWParam(nIndex), reinterpret_cast<LPARAM>(lpRect)));
}

BOOL CListBox::SetTabStops(int cxEachStop)
{
    return SendMessage(LB_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&cxEachStop)) != FALSE;
}
