// Dialog data exchange: the functions that a DoDataExchange calls, one line per bound control or value.
#pragma once

#include "afxwnd.h"

// One pass of the exchange.
class CDataExchange
{
  public:
    // TRUE: from the controls into the members.
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);

    BOOL m_bSaveAndValidate; // TRUE: from the controls into the members
    CWnd* m_pDlgWnd;
    HWND m_hWndLastControl = nullptr;
    BOOL m_bEditLastControl = FALSE; // its text is selected when the value is refused

    // The control's window, remembered as the one to return to in Fail. Throws CNotSupportedException when
    // the dialog has no such control.
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC);

    // Refuses the value of the last control: puts the focus on it and ends the
    // exchange. The user has had the message.
    [[noreturn]] void Fail();
};

// Makes rControl the object of the control; nothing changes when it already is. Throws CNotSupportedException
// when the control is missing or bound to another object.
void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);
// The text of a control. On the way in, a control that already shows it is left alone.
void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
// BST_UNCHECKED, BST_CHECKED or BST_INDETERMINATE.
void DDX_Check(CDataExchange* pDX, int nIDC, int& value);
// The selected line of a combo box, -1 for none.
void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);

// After the DDX_Text of the same value: on the way in limits the edit control to nChars bytes, on the way out
// refuses a longer value with the string AFX_IDP_PARSE_STRING_SIZE.
void DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);

// The text of DDV_MaxChars, "%1" stands for the number. The application's string table must hold it.
// A macro, since the application's resource script and its header name it too.
#define AFX_IDP_PARSE_STRING_SIZE 0xF114
