// The application object, the state of the module, and the functions that give access to them.
#pragma once

#include "afxwnd.h"

class CWinApp;

// What belongs to one loaded module (program or library) rather than to a thread.
struct AFX_MODULE_STATE
{
    CWinApp* m_pCurrentWinApp;
    HINSTANCE m_hCurrentInstanceHandle;
    HINSTANCE m_hCurrentResourceHandle; // where dialogs and strings are looked for
};

// The state of the module that this code is linked into.
[[nodiscard]] AFX_MODULE_STATE* AfxGetStaticModuleState();
// The calling thread's current state: the one switched to, or else the module's own.
[[nodiscard]] AFX_MODULE_STATE* AfxGetModuleState();
// Makes a state current for the calling thread and returns the one that was.
AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* pNewState);

// Makes a state current for the length of a scope.
class AFX_MAINTAIN_STATE
{
  public:
    // Until the end of the scope.
    explicit AFX_MAINTAIN_STATE(AFX_MODULE_STATE* pNewState) : m_pPrevState(AfxSetModuleState(pNewState)) {}
    ~AFX_MAINTAIN_STATE() { AfxSetModuleState(m_pPrevState); }
    AFX_MAINTAIN_STATE(const AFX_MAINTAIN_STATE&) = delete;
    AFX_MAINTAIN_STATE& operator=(const AFX_MAINTAIN_STATE&) = delete;

  private:
    AFX_MODULE_STATE* m_pPrevState;
};

// First line of every exported function: AFX_MANAGE_STATE(AfxGetStaticModuleState());
#define AFX_MANAGE_STATE(pNewState) const AFX_MAINTAIN_STATE maintainState(pNewState)

// The one application object of a module, a global of a class derived from this. A library's InitInstance and
// ExitInstance run inside DllMain, under the loader lock: they may not load libraries, make windows or wait.
class CWinApp : public CCmdTarget
{
    DECLARE_DYNAMIC(CWinApp)

  public:
    // Makes the object its module's application. The name is the caption of AfxMessageBox.
    explicit CWinApp(LPCSTR lpszAppName = nullptr);
    // Frees m_pszHelpFilePath.
    ~CWinApp() override;

    // FALSE keeps a library from being loaded.
    virtual BOOL InitInstance();
    // The exit code of a program.
    virtual int ExitInstance();

    HINSTANCE m_hInstance = nullptr; // set before InitInstance
    CWnd* m_pMainWnd = nullptr;      // owner of dialogs that name no parent; not owned
    LPCSTR m_pszAppName = nullptr;   // the caption of AfxMessageBox; not owned
    LPCSTR m_pszHelpFilePath =
        nullptr; // owned, allocated with malloc (_strdup); free the old one to replace it
};

// Of the current module state.
[[nodiscard]] CWinApp* AfxGetApp();
[[nodiscard]] LPCSTR AfxGetAppName();
[[nodiscard]] HINSTANCE AfxGetInstanceHandle();
[[nodiscard]] HINSTANCE AfxGetResourceHandle();
void AfxSetResourceHandle(HINSTANCE hInstResource);
// The application's main window, null when it has none.
[[nodiscard]] CWnd* AfxGetMainWnd();

// A program calls this first. FALSE when it has no application object.
BOOL AfxWinInit(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nCmdShow);

// A message box with the application's name over the window that is in use, with the exclamation mark unless
// nType says another icon. Returns the button's id.
int AfxMessageBox(LPCSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
// The same with a text of the string table.
int AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = static_cast<UINT>(-1));

// For a program's own message loop, after each message: throws on what a handler has thrown while no DoModal
// and no creation was in progress, if anything. A library has no such loop: its messages come inside a
// DoModal.
void AfxThrowKeptException();
