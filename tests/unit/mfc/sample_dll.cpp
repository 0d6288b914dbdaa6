// A library with an application object, for the tests of the entry point.
#include <afxwin.h>

namespace {

int g_started = 0;

class CSampleApp : public CWinApp
{
  public:
    CSampleApp() : CWinApp("sample") {}
    BOOL InitInstance() override
    {
        // The library's own handle has to be known by now.
        g_started = m_hInstance != nullptr && m_hInstance == AfxGetInstanceHandle() ? 1 : -1;
        return GetEnvironmentVariableA("SAMPLE_REFUSES", nullptr, 0) == 0;
    }
    int ExitInstance() override
    {
        SetEnvironmentVariableA("SAMPLE_ENDED", "yes");
        return CWinApp::ExitInstance();
    }
};

CSampleApp g_application;

} // namespace

extern "C" __declspec(dllexport) int Started();
extern "C" __declspec(dllexport) HINSTANCE ResourceModule();
extern "C" __declspec(dllexport) int UseWindows();

int Started()
{
    return g_started;
}

HINSTANCE ResourceModule()
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return AfxGetResourceHandle();
}

// Leaves per-thread state behind.
int UseWindows()
{
    CWnd window;
    window.CreateEx(0, "STATIC", "", WS_POPUP, CRect(0, 0, 1, 1), nullptr, 0);
    return CWnd::FromHandle(GetDesktopWindow()) != nullptr && window.m_hWnd != nullptr;
}
