// CPropertySheet and its modal loop.
#include "afxdlgs.h"
#include "CreationHook.h"
#include "HandlerScope.h"
#include "WndHelpers.h"

#include <commctrl.h>
#include <utility>

IMPLEMENT_DYNAMIC(CPropertySheet, CWnd)

BEGIN_MESSAGE_MAP(CPropertySheet, CWnd)
END_MESSAGE_MAP()

namespace {

// Keeps a window from being used while another runs on top of it.
class CDisabled
{
  public:
    explicit CDisabled(HWND hWnd) : m_hWnd(::IsWindowEnabled(hWnd) ? hWnd : nullptr)
    {
        if (m_hWnd != nullptr)
            ::EnableWindow(m_hWnd, FALSE);
    }
    ~CDisabled()
    {
        if (m_hWnd != nullptr)
            ::EnableWindow(m_hWnd, TRUE);
    }
    CDisabled(const CDisabled&) = delete;
    CDisabled& operator=(const CDisabled&) = delete;

  private:
    HWND m_hWnd;
};

bool IsInput(UINT message)
{
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
           (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
}

} // namespace

CPropertySheet::CPropertySheet(LPCSTR pszCaption, CWnd* pParentWnd, UINT iSelectPage)
    : m_strCaption(pszCaption), m_pParentWnd(pParentWnd)
{
    m_psh.dwSize = sizeof m_psh;
    m_psh.dwFlags = PSH_PROPSHEETPAGE | PSH_MODELESS;
    m_psh.nStartPage = iSelectPage;
}

CPropertySheet::CPropertySheet(UINT nIDCaption, CWnd* pParentWnd, UINT iSelectPage)
    : CPropertySheet(LPCSTR{nullptr}, pParentWnd, iSelectPage)
{
    m_strCaption.LoadString(nIDCaption);
}

CPropertySheet::~CPropertySheet()
{
    CPropertySheet::DestroyWindow();
}

void CPropertySheet::AddPage(CPropertyPage* pPage)
{
    m_pages.push_back(pPage);
}

INT_PTR CPropertySheet::DoModal()
{
    m_result = IDCANCEL;
    m_ended = false;
    CHandlerScope scope(*this);
    {
        const HWND owner = AfxOwnerFor(m_pParentWnd);
        // Enabled again before the sheet goes: Windows then gives the owner, not
        // some other program, the focus.
        const CDisabled disabled(owner);
        CreateSheet(owner);
        if (m_hWnd == nullptr)
            m_result = -1;
        RunLoop();
    }
    DestroyWindow();
    // A page whose template is missing would still be waiting for its window.
    for (CPropertyPage* page : m_pages)
        page->m_creation.reset();
    scope.Rethrow();
    return m_result;
}

void CPropertySheet::CreateSheet(HWND owner)
{
    std::vector<PROPSHEETPAGEA> pages;
    pages.reserve(m_pages.size());
    for (const CPropertyPage* page : m_pages)
        pages.push_back(page->m_psp);
    m_psh.hwndParent = owner;
    m_psh.hInstance = AfxGetResourceHandle();
    m_psh.pszCaption = m_strCaption;
    m_psh.nPages = static_cast<UINT>(pages.size());
    m_psh.ppsp = pages.data();
    const CCreationHook hook(*this, AfxDialogClass);
    if (hook.IsInstalled())
        ::PropertySheetA(&m_psh);
}

bool CPropertySheet::IsOverAfter(const MSG& message) const
{
    if (m_ended || m_hWnd == nullptr)
        return true;
    // Most messages of a sheet that opens are to paint, which ends none; to ask costs as much again.
    if (message.message == WM_PAINT)
        return false;
    // The system keeps a modeless sheet that is done until it is destroyed, but without a current page.
    return SendMessage(PSM_GETCURRENTPAGEHWND) == 0;
}

// Messages are fetched and passed on as Unicode: the system's dialog takes them for that, and would change
// characters that arrive in a code page.
void CPropertySheet::RunLoop()
{
    MSG message = {};
    while (!IsOverAfter(message)) {
        if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
            // The program is to end: this loop ends first, and the one around it has to learn of it, too.
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        Pump(message);
    }
}

void CPropertySheet::Pump(MSG& message) const
{
    // Only keys and the mouse can mean something to a sheet.
    if (IsInput(message.message) &&
        SendMessage(PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(&message)) != FALSE)
        return;
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
}

void CPropertySheet::EndDialog(int nEndID)
{
    m_result = nEndID;
    EndFailedLoop();
}

void CPropertySheet::EndFailedLoop()
{
    m_ended = true;
    m_mayBeOver = true;
    WakeLoop();
}

void CPropertySheet::PostNcDestroy()
{
    m_mayBeOver = true;
}

// Last of all, since a message box that a handler shows would take the loop's message.
void CPropertySheet::AfterMessage()
{
    if (std::exchange(m_mayBeOver, false))
        WakeLoop();
}

// The loop may be waiting for a message: what ended the sheet may have come from another thread by
// SendMessage.
void CPropertySheet::WakeLoop()
{
    ::PostThreadMessageA(::GetCurrentThreadId(), WM_NULL, 0, 0);
}

int CPropertySheet::GetActiveIndex() const
{
    if (m_hWnd == nullptr)
        return static_cast<int>(m_psh.nStartPage);
    const auto tabs = reinterpret_cast<HWND>(SendMessage(PSM_GETTABCONTROL));
    return static_cast<int>(::SendMessageA(tabs, TCM_GETCURSEL, 0, 0));
}

CPropertyPage* CPropertySheet::GetActivePage() const
{
    const int index = GetActiveIndex();
    return index >= 0 && index < GetPageCount() ? GetPage(index) : nullptr;
}

BOOL CPropertySheet::SetActivePage(int nPage)
{
    return SendMessage(PSM_SETCURSEL, static_cast<WPARAM>(nPage)) != FALSE;
}

BOOL CPropertySheet::PressButton(int nButton)
{
    return PostMessage(PSM_PRESSBUTTON, static_cast<WPARAM>(nButton));
}

BOOL CPropertySheet::OnInitDialog()
{
    const auto result = static_cast<BOOL>(Default());
    CenterWindow();
    return result;
}

BOOL CPropertySheet::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_INITDIALOG)
        return CWnd::OnWndMsg(message, wParam, lParam, pResult);
    *pResult = OnInitDialog();
    return TRUE;
}

BOOL CPropertySheet::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    return CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) ||
           RouteToParent(nID, nCode, pExtra, pHandlerInfo);
}
