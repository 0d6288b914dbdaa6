// The Desktop Mgmt page: switches desktop management of the domain's clients on and off, and names the login
// script that runs it.
#pragma once

#include "desktop/core/DesktopManagement.h"
#include "pages/PropPage.h"
#include "sysaccess/ParsedEdit.h"

#include <afxwin.h>

class CVtnClientPropPage : public CVtnPropPage
{
    DECLARE_DYNAMIC(CVtnClientPropPage)

  public:
    // Finds the script; throws ConfigurationError.
    CVtnClientPropPage();

    DWORD Save() override;
    // Whether the machine must be rebooted: the low 16 bits of the change flags.
    [[nodiscard]] bool IsChanged() const override { return LOWORD(m_changes) != 0; }

  protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    // A script that could not be updated keeps the user on the page while desktop management is on.
    BOOL OnKillActive() override;

    afx_msg void OnEnable();
    afx_msg void OnBrowse();
    afx_msg void OnScriptUpdate();

    DECLARE_MESSAGE_MAP()

  private:
    void SelectScript();
    // Only a script that is in use can be changed.
    void UpdateControls();

    CButton m_enableBox;
    CButton m_browseButton;
    CStatic m_scriptLabel;
    CParsedEdit m_scriptEdit;
    DesktopManagement m_settings;
    DWORD m_changes = 0;  // of DesktopChange
    bool m_isClientStart; // the administrator opened the applet to switch desktop management on
};
