// The entry point of a library that has an application object. Linked into libraries only.
#include "afxapp.h"
#include "HandlerScope.h"
#include "ThreadState.h"

// The loader lock is held: nothing here, or in the application's InitInstance and ExitInstance, may load a
// library, make a window or wait for a thread.
static BOOL Attach(HINSTANCE instance)
{
    AFX_MODULE_STATE* state = AfxGetStaticModuleState();
    state->m_hCurrentInstanceHandle = instance;
    state->m_hCurrentResourceHandle = instance;
    CWinApp* application = state->m_pCurrentWinApp;
    if (application == nullptr)
        return FALSE;
    application->m_hInstance = instance;
    return AfxGuard([application] { return application->InitInstance(); }, FALSE);
}

static void Detach()
{
    CWinApp* application = AfxGetStaticModuleState()->m_pCurrentWinApp;
    if (application != nullptr)
        AfxGuard([application] { return application->ExitInstance(); }, 0);
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/)
{
    if (reason == DLL_PROCESS_ATTACH)
        return Attach(instance);
    if (reason == DLL_THREAD_DETACH)
        CThreadState::Release();
    if (reason == DLL_PROCESS_DETACH)
        Detach();
    return TRUE;
}
