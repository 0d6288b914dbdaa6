// CPropertyPage.
#include "afxdlgs.h"
#include "CreationHook.h"
#include "HandlerScope.h"
#include "WndHelpers.h"

#include <utility>

IMPLEMENT_DYNAMIC(CPropertyPage, CDialog)

CPropertyPage::CPropertyPage(UINT nIDTemplate, UINT nIDCaption)
{
    m_psp.dwSize = sizeof m_psp;
    m_psp.dwFlags = PSP_USECALLBACK | (nIDCaption == 0 ? 0 : PSP_USETITLE);
    m_psp.hInstance = AfxGetResourceHandle();
    m_psp.pszTemplate = MAKEINTRESOURCEA(nIDTemplate);
    m_psp.pszTitle = MAKEINTRESOURCEA(nIDCaption);
    m_psp.pfnDlgProc = &AfxDlgProc;
    m_psp.pfnCallback = &PageCallback;
    m_psp.lParam = reinterpret_cast<LPARAM>(this);
}

CPropertyPage::~CPropertyPage() = default;

UINT CALLBACK CPropertyPage::PageCallback(HWND /*hWnd*/, UINT message, PROPSHEETPAGEA* page)
{
    if (message != PSPCB_CREATE)
        return TRUE;
    const auto self = reinterpret_cast<CPropertyPage*>(page->lParam);
    return AfxGuard(
        [self] {
            self->m_creation = std::make_unique<CCreationHook>(*self, AfxDialogClass);
            return self->m_creation->IsInstalled() ? 1U : 0U;
        },
        0U);
}

void CPropertyPage::SetModified(BOOL bChanged)
{
    const HWND sheet = ::GetParent(m_hWnd);
    ::SendMessageA(sheet, bChanged ? PSM_CHANGED : PSM_UNCHANGED, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

BOOL CPropertyPage::OnSetActive()
{
    if (std::exchange(m_shownBefore, true))
        UpdateData(FALSE);
    return TRUE;
}

BOOL CPropertyPage::OnKillActive()
{
    return UpdateData(TRUE);
}

BOOL CPropertyPage::OnApply()
{
    OnOK();
    return TRUE;
}

void CPropertyPage::OnReset()
{
    OnCancel();
}

BOOL CPropertyPage::OnQueryCancel()
{
    return TRUE;
}

void CPropertyPage::OnOK() {}

void CPropertyPage::OnCancel() {}

// The system reports the end of a modeless sheet, not its outcome; each page is notified of that last.
void CPropertyPage::RecordOutcome(int outcome) const
{
    const auto sheet = dynamic_cast<CPropertySheet*>(GetParent());
    if (sheet == nullptr)
        return;
    sheet->m_result = outcome;
    sheet->m_mayBeOver = true;
}

BOOL CPropertyPage::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    *pResult = 0;
    switch (reinterpret_cast<const NMHDR*>(lParam)->code) {
    case PSN_SETACTIVE:
        *pResult = OnSetActive() ? 0 : -1;
        return TRUE;
    case PSN_KILLACTIVE:
        *pResult = !OnKillActive();
        return TRUE;
    case PSN_APPLY:
        RecordOutcome(IDOK);
        if (OnApply())
            return TRUE;
        RecordOutcome(IDCANCEL);
        *pResult = PSNRET_INVALID_NOCHANGEPAGE;
        return TRUE;
    case PSN_RESET:
        RecordOutcome(IDCANCEL);
        OnReset();
        return TRUE;
    case PSN_QUERYCANCEL:
        *pResult = !OnQueryCancel();
        return TRUE;
    case PSN_HELP:
        SendMessage(WM_COMMAND, ID_HELP);
        return TRUE;
    default:
        return CDialog::OnNotify(wParam, lParam, pResult);
    }
}

LRESULT CPropertyPage::FailureAnswer(UINT message, WPARAM wParam, LPARAM lParam) const
{
    // A refused apply keeps the system from asking the remaining pages.
    if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == PSN_APPLY)
        return PSNRET_INVALID_NOCHANGEPAGE;
    return CDialog::FailureAnswer(message, wParam, lParam);
}

void CPropertyPage::PostNcDestroy()
{
    m_shownBefore = false;
}
