#include "TestDialogs.h"

#include <utility>

BEGIN_MESSAGE_MAP(CTestApp, CWinApp)
    ON_COMMAND(ID_APP_COMMAND, &CTestApp::OnAppCommand)
END_MESSAGE_MAP()

CTestApp& TestApp()
{
    return dynamic_cast<CTestApp&>(*AfxGetApp());
}

// By value: an action may put another in its own place.
static void Run(std::function<void()> action) // NOLINT(performance-unnecessary-value-param)
{
    if (action)
        action();
}

BEGIN_MESSAGE_MAP(CTestDialog, CDialog)
    ON_MESSAGE(WM_STEP, &CTestDialog::OnStep)
    ON_MESSAGE(WM_THROW, &CTestDialog::OnThrow)
    ON_BN_CLICKED(IDC_BUTTON, &CTestDialog::OnButton)
END_MESSAGE_MAP()

BOOL CTestDialog::OnInitDialog()
{
    CDialog::OnInitDialog();
    PostMessage(WM_STEP);
    Run(m_atInit);
    return TRUE;
}

void CTestDialog::OnOK()
{
    Run(m_atOk);
    CDialog::OnOK();
}

void CTestDialog::DoDataExchange(CDataExchange* pDX)
{
    if (m_exchange)
        m_exchange(pDX);
}

LRESULT CTestDialog::OnStep(WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    Run(m_step);
    return 0;
}

LRESULT CTestDialog::OnThrow(WPARAM wParam, LPARAM /*lParam*/)
{
    throw static_cast<int>(wParam);
}

void CTestDialog::OnButton()
{
    ++m_buttons;
    Run(m_atButton);
}

BEGIN_MESSAGE_MAP(CTestPage, CPropertyPage)
    ON_WM_CREATE()
    ON_MESSAGE(WM_THROW, &CTestPage::OnThrow)
    ON_BN_CLICKED(IDC_BUTTON, &CTestPage::OnButton)
END_MESSAGE_MAP()

CTestPage::CTestPage(UINT id, Log& log, std::string name)
    : CPropertyPage(id), m_log(log), m_name(std::move(name))
{
}

BOOL CTestPage::OnInitDialog()
{
    CPropertyPage::OnInitDialog();
    Note("init");
    Run(m_atInit);
    return TRUE;
}

BOOL CTestPage::OnSetActive()
{
    Note("shown");
    return m_mayShow && CPropertyPage::OnSetActive();
}

BOOL CTestPage::OnKillActive()
{
    Note("left");
    return m_mayLeave && CPropertyPage::OnKillActive();
}

BOOL CTestPage::OnApply()
{
    return CPropertyPage::OnApply() && m_mayApply;
}

void CTestPage::DoDataExchange(CDataExchange* pDX)
{
    CPropertyPage::DoDataExchange(pDX);
    DDX_Text(pDX, IDC_EDIT, m_text);
}

void CTestPage::OnOK()
{
    Note("OK");
    Run(m_atOk);
}

void CTestPage::OnCancel()
{
    Note("cancel");
}

int CTestPage::OnCreate(LPCREATESTRUCT create)
{
    Run(m_atCreate);
    return CPropertyPage::OnCreate(create);
}

LRESULT CTestPage::OnThrow(WPARAM wParam, LPARAM /*lParam*/)
{
    throw static_cast<int>(wParam);
}

void CTestPage::OnButton()
{
    Run(m_atButton);
}

BEGIN_MESSAGE_MAP(CTestSheet, CPropertySheet)
    ON_WM_CREATE()
    ON_MESSAGE(WM_STEP, &CTestSheet::OnStep)
    ON_MESSAGE(WM_THROW, &CTestSheet::OnThrow)
    ON_COMMAND(ID_HELP, &CTestSheet::OnHelp)
    ON_COMMAND(ID_SHEET_COMMAND, &CTestSheet::OnSheetCommand)
    ON_COMMAND(ID_CONTROL_COMMAND, &CTestSheet::OnSheetCommand)
END_MESSAGE_MAP()

BOOL CTestSheet::OnInitDialog()
{
    const BOOL result = CPropertySheet::OnInitDialog();
    PostMessage(WM_STEP);
    Run(m_atInit);
    return result;
}

int CTestSheet::OnCreate(LPCREATESTRUCT create)
{
    Run(m_atCreate);
    return m_refused ? -1 : CPropertySheet::OnCreate(create);
}

LRESULT CTestSheet::OnStep(WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    Run(m_step);
    return 0;
}

LRESULT CTestSheet::OnThrow(WPARAM wParam, LPARAM /*lParam*/)
{
    throw static_cast<int>(wParam);
}

BEGIN_MESSAGE_MAP(CTestOwner, CWnd)
    ON_MESSAGE(WM_ENTERIDLE, &CTestOwner::OnEnterIdle)
END_MESSAGE_MAP()

CTestOwner::CTestOwner()
{
    CreateEx(0, "STATIC", "Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 500, 400), nullptr, 0);
}

LRESULT CTestOwner::OnEnterIdle(WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    Run(m_atIdle);
    return 0;
}

static BOOL CALLBACK CountDialog(HWND window, LPARAM count)
{
    char name[16] = "";
    GetClassNameA(window, name, sizeof name);
    if (lstrcmpA(name, "#32770") == 0)
        ++*reinterpret_cast<int*>(count);
    return TRUE;
}

int DialogsOfThread()
{
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), &CountDialog, reinterpret_cast<LPARAM>(&count));
    return count;
}

static BOOL CALLBACK CountChild(HWND /*window*/, LPARAM count)
{
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

static BOOL CALLBACK CountWindow(HWND window, LPARAM count)
{
    EnumChildWindows(window, &CountChild, count);
    return CountChild(window, count);
}

int WindowsOfThread()
{
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), &CountWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}
