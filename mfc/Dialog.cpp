// CDialog.
#include "afxwin.h"
#include "CreationHook.h"
#include "HandlerScope.h"
#include "WndHelpers.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_COMMAND(IDOK, &CDialog::OnOK)
    ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
END_MESSAGE_MAP()

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog(MAKEINTRESOURCEA(nIDTemplate), pParentWnd) {}

CDialog::CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd)
    : m_lpszTemplateName(lpszTemplateName), m_pParentWnd(pParentWnd)
{
}

CDialog::~CDialog()
{
    CDialog::DestroyWindow();
}

INT_PTR CALLBACK AfxDlgProc(HWND hWnd, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    const auto dialog = dynamic_cast<CDialog*>(CWnd::FromHandlePermanent(hWnd));
    if (message != WM_INITDIALOG || dialog == nullptr)
        return FALSE;
    return AfxGuard([dialog] { return dialog->OnInitDialog(); }, FALSE);
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd)
{
    return Create(MAKEINTRESOURCEA(nIDTemplate), pParentWnd);
}

BOOL CDialog::Create(LPCSTR lpszTemplateName, CWnd* pParentWnd)
{
    CHandlerScope scope(*this);
    CreateFrom(lpszTemplateName, AfxOwnerFor(pParentWnd == nullptr ? m_pParentWnd : pParentWnd));
    if (scope.HasFailed())
        DestroyWindow();
    scope.Rethrow();
    return m_hWnd != nullptr;
}

void CDialog::CreateFrom(LPCSTR templateName, HWND owner)
{
    const CCreationHook hook(*this, AfxDialogClass);
    if (hook.IsInstalled())
        ::CreateDialogParamA(AfxGetResourceHandle(), templateName, owner, &AfxDlgProc, 0);
}

INT_PTR CDialog::DoModal()
{
    CHandlerScope scope(*this);
    const CCreationHook hook(*this, AfxDialogClass);
    if (!hook.IsInstalled())
        return -1;
    const INT_PTR result = ::DialogBoxParamA(AfxGetResourceHandle(), m_lpszTemplateName,
                                             AfxOwnerFor(m_pParentWnd), &AfxDlgProc, 0);
    scope.Rethrow();
    return result;
}

void CDialog::EndDialog(int nResult)
{
    ::EndDialog(m_hWnd, nResult);
}

void CDialog::EndFailedLoop()
{
    EndDialog(-1);
}

BOOL CDialog::OnInitDialog()
{
    return UpdateData(FALSE);
}

BOOL CDialog::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    return CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) ||
           RouteToParent(nID, nCode, pExtra, pHandlerInfo);
}

void CDialog::OnOK()
{
    if (UpdateData(TRUE))
        EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}
