// The SNMP Settings page for a user without a mouse.
#include "applet/SnmpPageTest.h"
#include "pages/core/Thresholds.h"
#include "support/ServiceScript.h"

#include <algorithm>
#include <array>

namespace {

using support::DialogDriver;
using support::ExpectDword;
using support::ExpectString;
using support::ServiceState;

constexpr int tabControl = 0x3020; // of the sheet

// A machine on which every control of the page can be used: SNMP runs, traps are set up, the host agent
// stands still.
class SnmpKeys : public SnmpPage
{
  protected:
    SnmpKeys()
    {
        m_machine.serverAgents.Subkey("VTNRACK").Create();
        m_machine.hostSnmp.SetDword("SetsEnabled", 1);
        m_machine.activeDebugger.SetString("Debugger", "drwtsn32");
        m_traps.SetBinary("TrapData", {1});
        m_thresholds.Delete();
        m_services.Add("SNMP", {.states = {ServiceState(SERVICE_RUNNING)}});
        m_services.Add("VtMgHost", {.states = {ServiceState(SERVICE_STOPPED)}});
    }

    // Opens the sheet with the focus in the page's first field.
    DialogDriver OpenAtTheRole()
    {
        const DialogDriver page = Open();
        page.Focus(IDC_SNMP_SERVER_ROLE);
        return page;
    }

    // Id of the control with the focus.
    [[nodiscard]] int Focus() const { return GetDlgCtrlID(m_host.Thread().Focus()); }

    // Presses Tab until the focus is back where it was, and returns where it has been.
    [[nodiscard]] std::vector<int> StopsOfTab() const
    {
        std::vector<int> stops;
        const int start = Focus();
        do {
            stops.push_back(Focus());
            m_host.PressKey(VK_TAB);
        } while (Focus() != start && stops.size() < 20);
        return stops;
    }

    support::SavedKey m_traps{"SYSTEM\\VortanHost\\Host\\Component\\GenericTrap"};
    support::SavedKey m_thresholds{"SYSTEM\\VortanPermanent"};
    support::ServiceScript m_services{m_host.Module()};
};

// --- Tab

TEST_F(SnmpKeys, TabGoesDownThePageThenThroughTheSheet)
{
    OpenAtTheRole();
    EXPECT_EQ(
        StopsOfTab(),
        (std::vector{IDC_SNMP_SERVER_ROLE, IDC_SNMP_INTERVAL, IDC_SNMP_SETS, IDC_SNMP_REMOTE_REBOOT,
                     IDC_SNMP_EXCEPTION_TRAP, IDC_SNMP_DISABLE_TELNET, IDC_SNMP_DISABLE_RACK_TRAPS,
                     IDC_SNMP_TEST_TRAP, IDC_SNMP_CLEAR_THRESHOLDS, IDOK, IDCANCEL, IDHELP, tabControl}));
    m_host.PressCancel();
}

TEST_F(SnmpKeys, TabPassesOverWhatCannotBeUsed)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", 0);
    m_machine.serverAgents.Subkey("VTNRACK").Delete();
    m_traps.DeleteValue("TrapData");
    OpenAtTheRole();
    const std::vector<int> stops = StopsOfTab();
    for (const int control : {IDC_SNMP_REMOTE_REBOOT, IDC_SNMP_DISABLE_RACK_TRAPS, IDC_SNMP_TEST_TRAP})
        EXPECT_EQ(std::ranges::count(stops, control), 0) << control;
    EXPECT_EQ(stops.size(), 10);
    m_host.PressCancel();
}

// --- Alt

TEST_F(SnmpKeys, AltVGoesToTheInterval)
{
    OpenAtTheRole();
    m_host.PressKeyWithAlt('V');
    EXPECT_EQ(Focus(), IDC_SNMP_INTERVAL);
    m_host.PressCancel();
}

struct BoxKey
{
    char letter;
    int box;
};

constexpr std::array boxKeys = {BoxKey{'S', IDC_SNMP_SETS}, BoxKey{'R', IDC_SNMP_REMOTE_REBOOT},
                                BoxKey{'A', IDC_SNMP_EXCEPTION_TRAP}, BoxKey{'D', IDC_SNMP_DISABLE_TELNET},
                                BoxKey{'I', IDC_SNMP_DISABLE_RACK_TRAPS}};

TEST_F(SnmpKeys, AltWithItsLetterSwitchesEachBox)
{
    const DialogDriver page = OpenAtTheRole();
    page.Type(IDC_SNMP_SERVER_ROLE, "Mail"); // from now on the sheet has an Apply that could take Alt+A
    for (const auto& [letter, box] : boxKeys) {
        const bool wasChecked = page.IsChecked(box);
        page.Focus(IDC_SNMP_SERVER_ROLE);
        m_host.PressKeyWithAlt(static_cast<WORD>(letter));
        EXPECT_EQ(page.IsChecked(box), !wasChecked) << letter;
        m_host.PressKeyWithAlt(static_cast<WORD>(letter));
        EXPECT_EQ(page.IsChecked(box), wasChecked) << letter;
    }
    m_host.PressCancel();
}

TEST_F(SnmpKeys, AltTSendsTheTestTrap)
{
    OpenAtTheRole();
    m_boxes.Answer(IDOK);
    m_host.PressKeyWithAlt('T');
    ASSERT_EQ(m_boxes.Shown().size(), 1);
    EXPECT_TRUE(m_boxes.Shown().front().text.ends_with("The test trap was not sent.")); // without an alerter
    m_host.PressCancel();
}

TEST_F(SnmpKeys, AltCClearsTheThresholds)
{
    support::TestKey(thresholdKeys[0]).Create();
    OpenAtTheRole();
    m_boxes.Answer(IDOK);
    m_host.PressKeyWithAlt('C');
    ASSERT_EQ(m_boxes.Shown().size(), 1);
    EXPECT_EQ(m_boxes.Shown().front().text, "The thresholds have been cleared.");
    EXPECT_FALSE(support::TestKey(thresholdKeys[0]).Exists());
    m_host.PressCancel();
}

// --- space and arrows

TEST_F(SnmpKeys, SpaceSwitchesTheBoxWithTheFocus)
{
    const DialogDriver page = OpenAtTheRole();
    for (const auto& [letter, box] : boxKeys) {
        const bool wasChecked = page.IsChecked(box);
        page.Focus(box);
        m_host.PressKey(VK_SPACE);
        EXPECT_EQ(page.IsChecked(box), !wasChecked) << letter;
        m_host.PressKey(VK_SPACE);
        EXPECT_EQ(page.IsChecked(box), wasChecked) << letter;
    }
    m_host.PressCancel();
}

TEST_F(SnmpKeys, ArrowsChooseTheInterval)
{
    const DialogDriver page = OpenAtTheRole();
    m_host.PressKeyWithAlt('V');
    m_host.PressKey(VK_END);
    EXPECT_EQ(page.Selection(IDC_SNMP_INTERVAL), 15);
    m_host.PressKey(VK_HOME);
    m_host.PressKey(VK_DOWN);
    m_host.PressKey(VK_DOWN);
    m_host.PressKey(VK_UP);
    EXPECT_EQ(page.Selection(IDC_SNMP_INTERVAL), 1);
    m_boxes.Answer(IDNO); // to the offer to start the agents
    m_host.PressOk();
    ExpectDword(m_machine.hostSnmp, "Timeout", 10000);
}

// --- Enter and Esc

TEST_F(SnmpKeys, EnterMeansOkInFieldsAndBoxes)
{
    for (const int control : {IDC_SNMP_SERVER_ROLE, IDC_SNMP_INTERVAL, IDC_SNMP_SETS}) {
        const DialogDriver page = OpenAtTheRole();
        page.SetText(IDC_SNMP_SERVER_ROLE, std::to_string(control));
        page.Focus(control);
        m_host.PressKey(VK_RETURN);
        EXPECT_EQ(m_host.WaitForEnd(), 0);
        ExpectString(m_machine.product, "ServerRole", std::to_string(control));
    }
}

TEST_F(SnmpKeys, EscSavesNothing)
{
    OpenAtTheRole();
    m_host.PressKeyWithAlt('D');
    m_host.PressKey(VK_ESCAPE);
    EXPECT_EQ(m_host.WaitForEnd(), 0);
    support::ExpectAbsent(m_machine.hostAgent, "HostFlags");
}

TEST_F(SnmpKeys, EverythingIsSavedThatKeysHaveChanged)
{
    const DialogDriver page = OpenAtTheRole();
    page.Type(IDC_SNMP_SERVER_ROLE, "Mail");
    for (const char letter : {'R', 'A', 'D', 'I'})
        m_host.PressKeyWithAlt(static_cast<WORD>(letter));
    m_boxes.Answer(IDNO); // to the offer to start the agents
    m_host.PressKey(VK_RETURN);
    EXPECT_EQ(m_host.WaitForEnd(), 0);
    ExpectString(m_machine.product, "ServerRole", "Mail");
    ExpectDword(m_machine.hostSnmp, "SetsEnabled", 7);
    ExpectDword(m_machine.hostAgent, "HostFlags", 1);
    ExpectString(m_machine.parkedDebugger, "Debugger", "drwtsn32");
}

} // namespace
