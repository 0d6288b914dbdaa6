// The application object of the library and the record of the applet for the Control Panel.
#pragma once

#include <afxwin.h>

// Gives the library its module state, its instance handle and its help file path.
class CVtnCPL : public CWinApp
{
  public:
    // The name, which is kept by address, is the caption of message boxes until UseAppletNameAsCaption.
    explicit CVtnCPL(const char* applicationName) : CWinApp(applicationName) {}
    ~CVtnCPL() override = default;

    BOOL InitInstance() override;
    int ExitInstance() override;

    // Keeps a copy of the current help file path, which replaces the last one.
    void CopyHelpFilePath();

    // From now on message boxes without a caption of their own have the applet's name.
    void UseAppletNameAsCaption();

    // Registers the message by which a shell asks for help. Its number is kept, though no window looks for it
    // yet.
    void RegisterShellHelpMessage();

    // The library itself: owner of its resources and its version.
    [[nodiscard]] HINSTANCE Instance() const { return m_instance; }

  private:
    HINSTANCE m_instance = nullptr;
    UINT m_shellHelpMessage = 0;
    CString m_appletName;
};

extern CVtnCPL theApp;

// One applet of the library. The Control Panel gets the first three; the others belong to CPL_NEWINQUIRE,
// which the applet does not answer.
struct AppletRecord
{
    UINT iconId = 0;
    UINT nameId = 0;
    UINT descriptionId = 0;
    DWORD flags = 0;
    DWORD helpContext = 0;
    const char* helpFilePath = nullptr;
};

// The one applet, filled at the first call.
const AppletRecord& TheAppletRecord();
