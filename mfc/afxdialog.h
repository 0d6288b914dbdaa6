// CDialog, a window made from a dialog template.
#pragma once

#include "afxwnd.h"

class CDialog : public CWnd
{
    DECLARE_DYNAMIC(CDialog)

  public:
    // A modeless dialog names its template in Create.
    CDialog() = default;
    // The parent, or else the application's main window, owns the dialog's window.
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    explicit CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    // Destroys the window if it still exists.
    ~CDialog() override;

    // Makes a modeless dialog; without a parent here, the constructor's counts. FALSE when the template is
    // missing or OnCreate refuses. Throws what a handler throws meanwhile; the window is gone by then.
    BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    BOOL Create(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);

    // Runs the dialog until EndDialog and returns its argument, -1 when the dialog cannot be made. Throws
    // what a handler throws meanwhile; the window is gone and the owner enabled again by then.
    virtual INT_PTR DoModal();
    void EndDialog(int nResult);

    // TRUE lets Windows put the focus on the first control. The base runs UpdateData(FALSE).
    virtual BOOL OnInitDialog();

    // Commands that the dialog does not handle go on to its parent window's
    // object and the application object.
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

    void EndFailedLoop() override;

  protected:
    // The buttons IDOK and IDCANCEL; the close button and Esc are IDCANCEL.
    virtual void OnOK();
    virtual void OnCancel();

    DECLARE_MESSAGE_MAP()

  private:
    void CreateFrom(LPCSTR templateName, HWND owner);

    LPCSTR m_lpszTemplateName = nullptr;
    CWnd* m_pParentWnd = nullptr;
};

// The dialog procedure of dialogs and pages: runs OnInitDialog and leaves
// everything else to the window procedure.
INT_PTR CALLBACK AfxDlgProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
