// The SNMP Settings page's view of its settings, and its two buttons.
#include "pages/SnmpPage.h"

#include "pages/core/TestTrap.h"
#include "pages/core/Thresholds.h"
#include "resources/resource.h"
#include "sysaccess/AgentRestart.h"
#include "sysaccess/MessageBoxes.h"
#include "sysaccess/ServiceStartStop.h"

BEGIN_MESSAGE_MAP(CVtnSnmpPropPage, CVtnPropPage)
    ON_BN_CLICKED(IDC_SNMP_TEST_TRAP, &CVtnSnmpPropPage::OnTestTrap)
    ON_BN_CLICKED(IDC_SNMP_CLEAR_THRESHOLDS, &CVtnSnmpPropPage::OnClearThresholds)
    ON_BN_CLICKED(IDC_SNMP_EXCEPTION_TRAP, &CVtnSnmpPropPage::OnExceptionTrap)
    ON_CBN_SELCHANGE(IDC_SNMP_INTERVAL, &CVtnSnmpPropPage::OnInterval)
    ON_EN_CHANGE(IDC_SNMP_SERVER_ROLE, &CVtnSnmpPropPage::OnServerRole)
    ON_CONTROL_RANGE(BN_CLICKED, IDC_FIRST, IDC_LAST, &CVtnSnmpPropPage::OnFlagClicked)
END_MESSAGE_MAP()

CVtnSnmpPropPage::CVtnSnmpPropPage() : CVtnPropPage(IDD_SNMP, "html\\vtnm7usw.htm")
{
    m_settings.Load();
}

DWORD CVtnSnmpPropPage::Save()
{
    m_settings.Save(m_changes);
    return ERROR_SUCCESS;
}

void CVtnSnmpPropPage::DoDataExchange(CDataExchange* pDX)
{
    CVtnPropPage::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_SNMP_TEST_TRAP, m_testTrapButton);
    DDX_Control(pDX, IDC_SNMP_INTERVAL, m_intervals);
    DDX_Control(pDX, IDC_SNMP_REMOTE_REBOOT, m_remoteRebootBox);
    DDX_Control(pDX, IDC_SNMP_SETS, m_snmpSetsBox);
    DDX_Control(pDX, IDC_SNMP_DISABLE_RACK_TRAPS, m_rackTrapsBox);
    DDX_Check(pDX, IDC_SNMP_EXCEPTION_TRAP, m_settings.exceptionTrap);
    DDX_CBIndex(pDX, IDC_SNMP_INTERVAL, m_settings.intervalIndex);
    for (const SnmpFlag& flag : snmpFlags)
        DDX_Check(pDX, flag.controlId, m_settings.*flag.setting);
    DDX_Control(pDX, IDC_SNMP_SERVER_ROLE, m_serverRoleEdit);
    ExchangeServerRole(pDX);
}

// A role may have been stored that is longer than the field takes. It stays as it is until the user edits it:
// nobody is kept on the page for a text that is not theirs.
void CVtnSnmpPropPage::ExchangeServerRole(CDataExchange* pDX)
{
    CString role = m_settings.serverRole.c_str();
    DDX_Text(pDX, IDC_SNMP_SERVER_ROLE, role);
    if (!pDX->m_bSaveAndValidate || role != m_settings.serverRole.c_str())
        DDV_MaxChars(pDX, role, serverRoleLimit);
    m_settings.serverRole = role;
}

BOOL CVtnSnmpPropPage::OnInitDialog()
{
    FillIntervals();
    CVtnPropPage::OnInitDialog();
    m_serverRoleEdit.SubclassFiltered(IDC_SNMP_SERVER_ROLE, this, CC_ANY, "");
    m_canSendTestTrap = CanSendTestTrap();
    // A stored reboot without sets is shown as off, but is no edit of the user's.
    UncheckRebootWithoutSets();
    UpdateControls();
    m_changes = 0;
    return TRUE;
}

// Before the first data exchange, which selects a line.
void CVtnSnmpPropPage::FillIntervals()
{
    CWnd* const list = GetDlgItem(IDC_SNMP_INTERVAL);
    for (const CollectionInterval& interval : collectionIntervals) {
        const CString text = LoadText(interval.textId);
        list->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(static_cast<LPCSTR>(text)));
    }
}

bool CVtnSnmpPropPage::AreSetsChecked() const
{
    return m_snmpSetsBox.GetCheck() == BST_CHECKED;
}

bool CVtnSnmpPropPage::UncheckRebootWithoutSets()
{
    if (AreSetsChecked() || m_remoteRebootBox.GetCheck() != BST_CHECKED)
        return false;
    m_remoteRebootBox.SetCheck(BST_UNCHECKED);
    return true;
}

void CVtnSnmpPropPage::UpdateControls()
{
    m_remoteRebootBox.EnableWindow(AreSetsChecked());
    m_rackTrapsBox.EnableWindow(m_settings.hasRackSupport);
    m_testTrapButton.EnableWindow(m_canSendTestTrap);
}

void CVtnSnmpPropPage::OnFlagClicked(UINT controlId)
{
    for (const SnmpFlag& flag : snmpFlags) {
        if (flag.controlId == static_cast<int>(controlId))
            m_changes |= flag.change;
    }
    if (UncheckRebootWithoutSets())
        m_changes |= RemoteRebootChanged;
    UpdateControls();
}

void CVtnSnmpPropPage::OnTestTrap()
{
    std::string text;
    switch (SendTestTrap(text)) {
    case TestTrapOutcome::AlerterNotReady:
        MessageBoxById(m_hWnd, IDS_ALERTER_NOT_READY, IDS_APPLET_NAME, MB_ICONINFORMATION);
        return;
    case TestTrapOutcome::NotGenerated:
        MessageBoxById(m_hWnd, IDS_TRAP_NOT_GENERATED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
        return;
    case TestTrapOutcome::Sent:
        break;
    }
    CString report;
    report.Format(LoadText(IDS_TRAP_SENT), text.c_str());
    MessageBoxText(m_hWnd, report, MB_ICONINFORMATION);
}

// The agents hold their thresholds while they run and would write them back.
void CVtnSnmpPropPage::OnClearThresholds()
{
    AgentServiceChain agents;
    const std::optional<DWORD> hostState = agents.HostState();
    if (!hostState.has_value())
        return;
    agents.ListServices();
    if (!CanControlAgents(m_hWnd, *hostState))
        return;
    if (*hostState == SERVICE_STOPPED) {
        ReportThresholds(AreThresholdsCleared(DeleteThresholds()));
        return;
    }
    if (MessageBoxById(m_hWnd, IDS_CLEAR_NEEDS_STOP, IDS_APPLET_NAME, MB_YESNO | MB_ICONINFORMATION) != IDYES)
        return;
    PleaseWaitSlot pleaseWait;
    ServiceDialogs dialogs(m_hWnd, pleaseWait);
    agents.StopAll(dialogs);
    const bool areCleared = AreThresholdsCleared(DeleteThresholds());
    agents.StartAll(dialogs);
    ReportThresholds(areCleared);
}

void CVtnSnmpPropPage::ReportThresholds(bool areCleared) const
{
    if (areCleared)
        MessageBoxById(m_hWnd, IDS_THRESHOLDS_CLEARED, IDS_APPLET_NAME, MB_ICONINFORMATION);
    else
        MessageBoxById(m_hWnd, IDS_THRESHOLDS_NOT_CLEARED, IDS_APPLET_NAME, MB_ICONHAND);
}
