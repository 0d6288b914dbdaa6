// Dialog data exchange.
#include "afxapp.h"
#include "afxdd_.h"
#include "WndHelpers.h"

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd)
{
}

HWND CDataExchange::PrepareCtrl(int nIDC)
{
    m_hWndLastControl = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    m_bEditLastControl = FALSE;
    if (m_hWndLastControl == nullptr)
        AfxThrowNotSupportedException();
    return m_hWndLastControl;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC)
{
    PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return m_hWndLastControl;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_hWndLastControl != nullptr) {
        ::SetFocus(m_hWndLastControl);
        if (m_bEditLastControl)
            ::SendMessageA(m_hWndLastControl, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (rControl.m_hWnd == nullptr && !rControl.SubclassWindow(control))
        AfxThrowNotSupportedException();
}

void DDX_Text(CDataExchange* pDX, int nIDC, CString& value)
{
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    CString shown;
    AfxReadText(control, shown);
    if (pDX->m_bSaveAndValidate)
        value = shown;
    else if (shown != value)
        ::SetWindowTextA(control, value);
}

void DDX_Check(CDataExchange* pDX, int nIDC, int& value)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = static_cast<int>(::SendMessageA(control, BM_GETCHECK, 0, 0));
    else
        ::SendMessageA(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        index = static_cast<int>(::SendMessageA(control, CB_GETCURSEL, 0, 0));
    else
        ::SendMessageA(control, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars)
{
    if (!pDX->m_bSaveAndValidate) {
        if (pDX->m_hWndLastControl != nullptr && pDX->m_bEditLastControl)
            ::SendMessageA(pDX->m_hWndLastControl, EM_LIMITTEXT, static_cast<WPARAM>(nChars), 0);
        return;
    }
    if (value.GetLength() <= nChars)
        return;
    CString number;
    number.Format("%d", nChars);
    CString prompt;
    AfxFormatString1(prompt, AFX_IDP_PARSE_STRING_SIZE, number);
    AfxMessageBox(prompt, MB_ICONEXCLAMATION, AFX_IDP_PARSE_STRING_SIZE);
    pDX->Fail();
}
