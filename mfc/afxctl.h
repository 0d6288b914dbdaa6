// The controls of Windows as objects; each function sends the control's message of that name. A control
// object is a member of its dialog and is bound to the template's control by DDX_Control.
#pragma once

#include "afxwnd.h"

class CStatic : public CWnd
{
    DECLARE_DYNAMIC(CStatic)
};

class CButton : public CWnd
{
    DECLARE_DYNAMIC(CButton)

  public:
    [[nodiscard]] int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int nCheck) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck)); }
};

class CEdit : public CWnd
{
    DECLARE_DYNAMIC(CEdit)

  public:
    // Positions in characters; 0 and -1 select everything. Scrolls the caret into view unless bNoScroll.
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE);
    void GetSel(int& nStartChar, int& nEndChar) const;
    void ReplaceSel(LPCSTR lpszNewText, BOOL bCanUndo = FALSE);
    // The most that the user can type, 0 for as much as there can be.
    void LimitText(int nChars = 0) { SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(nChars)); }
    [[nodiscard]] UINT GetLimitText() const { return static_cast<UINT>(SendMessage(EM_GETLIMITTEXT)); }
};

// Positions count from 0; LB_ERR (-1) stands for none.
class CListBox : public CWnd
{
    DECLARE_DYNAMIC(CListBox)

  public:
    [[nodiscard]] int GetCount() const { return Ask(LB_GETCOUNT); }
    [[nodiscard]] int GetCurSel() const { return Ask(LB_GETCURSEL); }
    int SetCurSel(int nSelect) { return Ask(LB_SETCURSEL, nSelect); }

    // The number kept with an item; all ones (LB_ERR) for a position that does not exist.
    [[nodiscard]] DWORD_PTR GetItemData(int nIndex) const;
    int SetItemData(int nIndex, DWORD_PTR dwItemData);

    // The new item's position. AddString sorts where the list does, InsertString
    // never; position -1 is the end.
    int AddString(LPCSTR lpszItem) { return Ask(LB_ADDSTRING, 0, lpszItem); }
    int InsertString(int nIndex, LPCSTR lpszItem) { return Ask(LB_INSERTSTRING, nIndex, lpszItem); }
    // How many items remain.
    int DeleteString(UINT nIndex) { return Ask(LB_DELETESTRING, static_cast<int>(nIndex)); }
    void ResetContent() { Ask(LB_RESETCONTENT); }

    // The first item after nStartAfter (-1: from the start) that begins with, or
    // is, the text, whatever the case.
    [[nodiscard]] int FindString(int nStartAfter, LPCSTR lpszItem) const
    {
        return Ask(LB_FINDSTRING, nStartAfter, lpszItem);
    }
    [[nodiscard]] int FindStringExact(int nIndexStart, LPCSTR lpszFind) const
    {
        return Ask(LB_FINDSTRINGEXACT, nIndexStart, lpszFind);
    }

    // Empty for a position that does not exist.
    void GetText(int nIndex, CString& rString) const;
    [[nodiscard]] int GetTextLen(int nIndex) const { return Ask(LB_GETTEXTLEN, nIndex); }
    // In the list's client coordinates.
    int GetItemRect(int nIndex, LPRECT lpRect) const;
    // One tab stop every so many dialog units.
    BOOL SetTabStops(int cxEachStop);

  private:
    int Ask(UINT message, int index = 0, LPCSTR text = nullptr) const;
};

// Positions count from 0; CB_ERR (-1) stands for none.
class CComboBox : public CWnd
{
    DECLARE_DYNAMIC(CComboBox)

  public:
    [[nodiscard]] int GetCount() const { return Ask(CB_GETCOUNT); }
    [[nodiscard]] int GetCurSel() const { return Ask(CB_GETCURSEL); }
    int SetCurSel(int nSelect) { return Ask(CB_SETCURSEL, nSelect); }
    // The new item's position.
    int AddString(LPCSTR lpszString) { return Ask(CB_ADDSTRING, 0, lpszString); }
    void ResetContent() { Ask(CB_RESETCONTENT); }
    // Empty for a position that does not exist.
    void GetLBText(int nIndex, CString& rString) const;
    [[nodiscard]] int GetLBTextLen(int nIndex) const { return Ask(CB_GETLBTEXTLEN, nIndex); }

  private:
    int Ask(UINT message, int index = 0, LPCSTR text = nullptr) const;
};
