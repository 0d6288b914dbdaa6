// The application object and the module state.
#include "afxapp.h"
#include "ThreadState.h"
#include "WndHelpers.h"

#include <cstdlib>
#include <utility>

IMPLEMENT_DYNAMIC(CWinApp, CCmdTarget)

// Without constructor and destructor: the application object, a global elsewhere, uses it in both of its own.
static constinit AFX_MODULE_STATE g_moduleState = {};

AFX_MODULE_STATE* AfxGetStaticModuleState()
{
    return &g_moduleState;
}

AFX_MODULE_STATE* AfxGetModuleState()
{
    AFX_MODULE_STATE* current = CThreadState::Get().m_moduleState;
    return current == nullptr ? AfxGetStaticModuleState() : current;
}

AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* pNewState)
{
    AFX_MODULE_STATE* before = AfxGetModuleState();
    CThreadState::Get().m_moduleState = pNewState;
    return before;
}

CWinApp::CWinApp(LPCSTR lpszAppName) : m_pszAppName(lpszAppName)
{
    ASSERT(g_moduleState.m_pCurrentWinApp == nullptr);
    g_moduleState.m_pCurrentWinApp = this;
}

CWinApp::~CWinApp()
{
    std::free(const_cast<char*>(m_pszHelpFilePath));
    if (g_moduleState.m_pCurrentWinApp == this)
        g_moduleState.m_pCurrentWinApp = nullptr;
}

BOOL CWinApp::InitInstance()
{
    return TRUE;
}

int CWinApp::ExitInstance()
{
    return 0;
}

CWinApp* AfxGetApp()
{
    return AfxGetModuleState()->m_pCurrentWinApp;
}

LPCSTR AfxGetAppName()
{
    const CWinApp* application = AfxGetApp();
    return application == nullptr ? nullptr : application->m_pszAppName;
}

HINSTANCE AfxGetInstanceHandle()
{
    return AfxGetModuleState()->m_hCurrentInstanceHandle;
}

HINSTANCE AfxGetResourceHandle()
{
    return AfxGetModuleState()->m_hCurrentResourceHandle;
}

void AfxSetResourceHandle(HINSTANCE hInstResource)
{
    AfxGetModuleState()->m_hCurrentResourceHandle = hInstResource;
}

CWnd* AfxGetMainWnd()
{
    const CWinApp* application = AfxGetApp();
    return application == nullptr ? nullptr : application->m_pMainWnd;
}

BOOL AfxWinInit(HINSTANCE hInstance, HINSTANCE /*hPrevInstance*/, LPSTR /*lpCmdLine*/, int /*nCmdShow*/)
{
    AFX_MODULE_STATE* state = AfxGetModuleState();
    state->m_hCurrentInstanceHandle = hInstance;
    state->m_hCurrentResourceHandle = hInstance;
    if (state->m_pCurrentWinApp == nullptr)
        return FALSE;
    state->m_pCurrentWinApp->m_hInstance = hInstance;
    return TRUE;
}

HWND AfxOwnerFor(const CWnd* parent)
{
    const HWND window = AfxHandleOf(parent != nullptr ? parent : AfxGetMainWnd());
    return window == nullptr ? nullptr : ::GetAncestor(window, GA_ROOT);
}

int AfxMessageBox(LPCSTR lpszText, UINT nType, UINT /*nIDHelp*/)
{
    // The dialog in use rather than the main window that it disables.
    HWND owner = ::GetActiveWindow();
    if (owner == nullptr)
        owner = AfxOwnerFor(nullptr);
    const UINT icon = (nType & MB_ICONMASK) == 0 ? MB_ICONEXCLAMATION : 0;
    return ::MessageBoxA(owner, lpszText, AfxGetAppName(), nType | icon);
}

int AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp)
{
    CString text;
    text.LoadString(nIDPrompt);
    return AfxMessageBox(text, nType, nIDHelp);
}
