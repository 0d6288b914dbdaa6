// The SNMP Settings page: what all agents share, a test trap, and the clearing of the thresholds.
#pragma once

#include "pages/core/SnmpSettings.h"
#include "pages/PropPage.h"
#include "sysaccess/ParsedEdit.h"

#include <afxwin.h>

class CVtnSnmpPropPage : public CVtnPropPage
{
  public:
    // Loads the settings; throws ConfigurationError.
    CVtnSnmpPropPage();

    DWORD Save() override;
    [[nodiscard]] bool IsChanged() const override { return LOWORD(m_changes) != 0; }
    // SnmpChange bits of the controls that were used since the page has been shown; a save keeps them.
    [[nodiscard]] DWORD Changes() const { return m_changes; }

  protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;

    afx_msg void OnInterval() { m_changes |= IntervalChanged; }
    afx_msg void OnExceptionTrap() { m_changes |= ExceptionTrapChanged; }
    // For the boxes of snmpFlags.
    afx_msg void OnFlagClicked(UINT controlId);
    afx_msg void OnServerRole() { SetModified(TRUE); }
    afx_msg void OnTestTrap();
    afx_msg void OnClearThresholds();

    DECLARE_MESSAGE_MAP()

  private:
    void ExchangeServerRole(CDataExchange* pDX);
    void FillIntervals();
    [[nodiscard]] bool AreSetsChecked() const;
    // Remote reboot works through SNMP sets: without them it is unchecked, and cannot be checked. True when
    // it was checked.
    bool UncheckRebootWithoutSets();
    // Enables and disables the controls; nothing else does.
    void UpdateControls();
    void ReportThresholds(bool areCleared) const;

    CButton m_testTrapButton;
    CComboBox m_intervals;
    CButton m_remoteRebootBox;
    CButton m_snmpSetsBox;
    CButton m_rackTrapsBox;
    CParsedEdit m_serverRoleEdit;

    SnmpSettings m_settings;
    bool m_canSendTestTrap = false; // when the page was opened
    DWORD m_changes = 0;            // of SnmpChange
};
