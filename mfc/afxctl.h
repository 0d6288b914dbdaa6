// The controls of Windows as objects; each function sends the control's message of that name. A control
// object is a member of its dialog and is bound to the template's control by DDX_Control.
#pragma once

#include "afxwnd.h"

// A text or picture that the user cannot change.
class CStatic : public CWnd
{
    DECLARE_DYNAMIC(CStatic)
};

// A push button, check box or radio button.
class CButton : public CWnd
{
    DECLARE_DYNAMIC(CButton)

  public:
    // BST_UNCHECKED, BST_CHECKED or BST_INDETERMINATE.
    [[nodiscard]] int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int nCheck) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck)); }
};

// A field to type in. OnChar gets Unicode, so that what is typed arrives whole: a character of two bytes
// would come in two messages, which the system's edit does not put together again.
class CEdit : public CWnd
{
    DECLARE_DYNAMIC(CEdit)

  public:
    // Positions in characters; 0 and -1 select everything. Scrolls the caret into view unless bNoScroll.
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE);
    void GetSel(int& nStartChar, int& nEndChar) const;
    // Room beside the text, in pixels.
    void SetMargins(UINT nLeft, UINT nRight)
    {
        SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELONG(nLeft, nRight));
    }

  protected:
    [[nodiscard]] bool TakesUnicode() const override { return true; }
};

// For the library's own sources: what a list answers to its message about a position and a text, as a number.
int AfxAskList(const CWnd& list, UINT message, int index = 0, LPCSTR text = nullptr);

// Positions count from 0; LB_ERR (-1) stands for none.
class CListBox : public CWnd
{
    DECLARE_DYNAMIC(CListBox)

  public:
    // Items and the selected one.
    [[nodiscard]] int GetCount() const { return AfxAskList(*this, LB_GETCOUNT); }
    [[nodiscard]] int GetCurSel() const { return AfxAskList(*this, LB_GETCURSEL); }
    int SetCurSel(int nSelect) { return AfxAskList(*this, LB_SETCURSEL, nSelect); }

    // The number kept with an item; all ones (LB_ERR) for a position that does not exist.
    [[nodiscard]] DWORD_PTR GetItemData(int nIndex) const;
    int SetItemData(int nIndex, DWORD_PTR dwItemData);

    // The new item's position. AddString sorts where the list does, InsertString
    // never; position -1 is the end.
    int AddString(LPCSTR lpszItem) { return AfxAskList(*this, LB_ADDSTRING, 0, lpszItem); }
    int InsertString(int nIndex, LPCSTR lpszItem)
    {
        return AfxAskList(*this, LB_INSERTSTRING, nIndex, lpszItem);
    }
    // How many items remain.
    int DeleteString(UINT nIndex) { return AfxAskList(*this, LB_DELETESTRING, static_cast<int>(nIndex)); }
    // Removes all items.
    void ResetContent() { AfxAskList(*this, LB_RESETCONTENT); }

    // The first item after nStartAfter (-1: from the start) that begins with the text, whatever the case.
    [[nodiscard]] int FindString(int nStartAfter, LPCSTR lpszItem) const
    {
        return AfxAskList(*this, LB_FINDSTRING, nStartAfter, lpszItem);
    }
    // The same for an item that is the text.
    [[nodiscard]] int FindStringExact(int nIndexStart, LPCSTR lpszFind) const
    {
        return AfxAskList(*this, LB_FINDSTRINGEXACT, nIndexStart, lpszFind);
    }

    // An item's text; empty for a position that does not exist.
    void GetText(int nIndex, CString& rString) const;
    // The item at, or else nearest to, a point in client coordinates; whether the point lies outside the
    // list.
    UINT ItemFromPoint(CPoint pt, BOOL& bOutside) const;
    // In the list's client coordinates.
    int GetItemRect(int nIndex, LPRECT lpRect) const;
    // One tab stop every so many dialog units.
    BOOL SetTabStops(int cxEachStop);
    // Pixels that a list with WS_HSCROLL can show by scrolling; it does not look at its texts itself.
    void SetHorizontalExtent(int cxExtent) { AfxAskList(*this, LB_SETHORIZONTALEXTENT, cxExtent); }
};

// Positions count from 0; CB_ERR (-1) stands for none.
class CComboBox : public CWnd
{
    DECLARE_DYNAMIC(CComboBox)

  public:
    // Lines and the selected one.
    [[nodiscard]] int GetCount() const { return AfxAskList(*this, CB_GETCOUNT); }
    [[nodiscard]] int GetCurSel() const { return AfxAskList(*this, CB_GETCURSEL); }
    int SetCurSel(int nSelect) { return AfxAskList(*this, CB_SETCURSEL, nSelect); }
    // The new item's position.
    int AddString(LPCSTR lpszString) { return AfxAskList(*this, CB_ADDSTRING, 0, lpszString); }
    // Removes all lines.
    void ResetContent() { AfxAskList(*this, CB_RESETCONTENT); }
};
