// The please-wait dialog; see the header.
#include "sysaccess/PleaseWaitDlg.h"

#include <utility>

namespace {

constexpr DWORD readableFor = 1000; // milliseconds

} // namespace

BEGIN_MESSAGE_MAP(CPleaseWaitDlg, CDialog)
    ON_WM_CREATE()
END_MESSAGE_MAP()

CPleaseWaitDlg::CPleaseWaitDlg(const char* message, DWORD /*minimumDisplay*/, CWnd* parent)
    : CDialog(IDD, parent), m_message(message), m_minimumDisplay(readableFor)
{
}

CPleaseWaitDlg::~CPleaseWaitDlg()
{
    if (m_hWnd != nullptr)
        KeepReadable();
    m_waitCursor.reset();
    DestroyWindow();
}

void CPleaseWaitDlg::KeepReadable() const
{
    // Unsigned, so that the counter's wrap after 49.7 days does no harm.
    const DWORD elapsed = GetTickCount() - m_shownSince;
    if (elapsed < m_minimumDisplay)
        Sleep(m_minimumDisplay - elapsed);
}

void CPleaseWaitDlg::SetMessage(const char* message)
{
    m_message = message;
    SetDlgItemText(IDC_PLEASE_WAIT_TEXT, m_message);
    UpdateWindow();
    m_shownSince = GetTickCount();
}

void CPleaseWaitDlg::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Text(pDX, IDC_PLEASE_WAIT_TEXT, m_message);
}

int CPleaseWaitDlg::OnCreate(LPCREATESTRUCT createStruct)
{
    if (CDialog::OnCreate(createStruct) == -1)
        return -1;
    CenterWindow();
    m_waitCursor.emplace();
    m_shownSince = GetTickCount();
    return 0;
}

HWND ShowPleaseWait(HWND owner, const char* message, PleaseWaitSlot& slot)
{
    if (slot != nullptr) {
        slot->SetMessage(message);
        return slot->m_hWnd;
    }
    auto dialog = std::make_unique<CPleaseWaitDlg>(message, readableFor, CWnd::FromHandle(owner));
    if (!dialog->Create(CPleaseWaitDlg::IDD))
        return nullptr;
    // The thread will not look for messages for long. Windows would put a ghost that nobody paints in the
    // place of its windows, and the user would read there that the program does not respond.
    DisableProcessWindowsGhosting();
    dialog->UpdateWindow();
    slot = std::move(dialog);
    return slot->m_hWnd;
}
