// The SNMP Settings page through its window.
#include "applet/AppletTest.h"
#include "pages/SnmpSettings.h"
#include "resources/resource.h"
#include "support/ServiceScript.h"

#include <array>
#include <cstdlib>

namespace {

using support::DialogDriver;
using support::ExpectAbsent;
using support::ExpectDword;
using support::ExpectString;

class SnmpPage : public AppletTest
{
  protected:
    DialogDriver Open()
    {
        m_host.Open();
        return m_host.Page("SNMP Settings");
    }

    // What the page as it was opened shows, without saving it.
    template <typename Question>
    auto Ask(Question question)
    {
        const auto answer = question(Open());
        m_host.PressCancel();
        return answer;
    }
};

// --- what it shows

TEST_F(SnmpPage, ShowsTheStoredSettings)
{
    m_machine.product.SetString("ServerRole", "Mail");
    m_machine.hostSnmp.SetDword("SetsEnabled", 7);
    m_machine.hostSnmp.SetDword("Timeout", 60000);
    m_machine.hostAgent.SetDword("HostFlags", 1);
    m_machine.activeDebugger.SetString("Debugger", "vtndbg -p %ld -e %ld -g");
    const DialogDriver page = Open();
    EXPECT_EQ(page.Text(IDC_SNMP_SERVER_ROLE), "Mail");
    EXPECT_EQ(page.Selection(IDC_SNMP_INTERVAL), 5);
    for (const int box : {IDC_SNMP_SETS, IDC_SNMP_REMOTE_REBOOT, IDC_SNMP_DISABLE_RACK_TRAPS,
                          IDC_SNMP_DISABLE_TELNET, IDC_SNMP_EXCEPTION_TRAP})
        EXPECT_TRUE(page.IsChecked(box)) << box;
    m_host.PressCancel();
}

// "1 Minute" and the like, in milliseconds.
DWORD MillisecondsOf(const std::string& text)
{
    char* unit = nullptr;
    const DWORD count = std::strtoul(text.c_str(), &unit, 10);
    return std::string(unit).starts_with(" Minute") ? count * 60000 : count * 1000;
}

TEST_F(SnmpPage, NamesEachIntervalByItsLength)
{
    const std::vector<std::string> items =
        Ask([](const DialogDriver& page) { return page.Items(IDC_SNMP_INTERVAL); });
    ASSERT_EQ(items.size(), 16);
    EXPECT_EQ(items.front(), "5 Seconds");
    EXPECT_EQ(items.back(), "60 Minutes");
    for (std::size_t row = 0; row < items.size(); ++row)
        EXPECT_EQ(MillisecondsOf(items[row]), collectionIntervals[row].milliseconds) << items[row];
}

TEST_F(SnmpPage, OffersRackTrapsOnlyWithRackSupport)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", 4);
    const auto isOffered = [](const DialogDriver& page) {
        EXPECT_TRUE(page.IsChecked(IDC_SNMP_DISABLE_RACK_TRAPS));
        return page.IsEnabled(IDC_SNMP_DISABLE_RACK_TRAPS);
    };
    EXPECT_FALSE(Ask(isOffered));
    m_machine.serverAgents.Subkey("VTNRACK").Create();
    EXPECT_TRUE(Ask(isOffered));
}

TEST_F(SnmpPage, OffersTheTestTrapOnlyWithAnActiveSnmpServiceAndTrapData)
{
    const support::SavedKey traps("SYSTEM\\VortanHost\\Host\\Component\\GenericTrap");
    support::ServiceScript services(m_host.Module());
    const auto isOffered = [](const DialogDriver& page) { return page.IsEnabled(IDC_SNMP_TEST_TRAP); };
    traps.SetBinary("TrapData", {1});
    services.Add("SNMP", {.states = {support::ServiceState(SERVICE_RUNNING)}});
    EXPECT_TRUE(Ask(isOffered));
    services.Add("SNMP", {.states = {support::ServiceState(SERVICE_STOPPED)}});
    EXPECT_FALSE(Ask(isOffered));
    services.Add("SNMP", {.states = {support::ServiceState(SERVICE_RUNNING)}});
    traps.DeleteValue("TrapData");
    EXPECT_FALSE(Ask(isOffered));
}

// --- sets and remote reboot

TEST_F(SnmpPage, UnchecksRemoteRebootThatWasStoredWithoutSetsAndSavesNothing)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", 2);
    const DialogDriver page = Open();
    EXPECT_FALSE(page.IsChecked(IDC_SNMP_REMOTE_REBOOT));
    EXPECT_FALSE(page.IsEnabled(IDC_SNMP_REMOTE_REBOOT));
    m_host.PressOk();
    ExpectDword(m_machine.hostSnmp, "SetsEnabled", 2);
}

TEST_F(SnmpPage, TakesRemoteRebootAwayWithSets)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", 3);
    const DialogDriver page = Open();
    EXPECT_TRUE(page.IsEnabled(IDC_SNMP_REMOTE_REBOOT));
    page.Uncheck(IDC_SNMP_SETS);
    EXPECT_FALSE(page.IsChecked(IDC_SNMP_REMOTE_REBOOT));
    EXPECT_FALSE(page.IsEnabled(IDC_SNMP_REMOTE_REBOOT));
    page.Check(IDC_SNMP_SETS);
    EXPECT_FALSE(page.IsChecked(IDC_SNMP_REMOTE_REBOOT));
    EXPECT_TRUE(page.IsEnabled(IDC_SNMP_REMOTE_REBOOT));
    m_host.PressCancel();
}

TEST_F(SnmpPage, SavesEveryCombinationThatTheUserCanTick)
{
    m_machine.serverAgents.Subkey("VTNRACK").Create();
    for (const DWORD flags : {0U, 1U, 3U, 4U, 5U, 7U}) {
        m_machine.hostSnmp.SetDword("SetsEnabled", 0x1F);
        const DialogDriver page = Open();
        for (const int box : {IDC_SNMP_REMOTE_REBOOT, IDC_SNMP_SETS, IDC_SNMP_DISABLE_RACK_TRAPS})
            page.Uncheck(box);
        constexpr std::array boxes = {IDC_SNMP_SETS, IDC_SNMP_REMOTE_REBOOT, IDC_SNMP_DISABLE_RACK_TRAPS};
        for (std::size_t bit = 0; bit < boxes.size(); ++bit) {
            if ((flags >> bit & 1) != 0)
                page.Check(boxes[bit]);
        }
        m_host.PressOk();
        ExpectDword(m_machine.hostSnmp, "SetsEnabled", flags);
    }
}

// --- what each control saves

// Values that tell which of the page's settings were written.
class OneControl : public SnmpPage
{
  protected:
    OneControl()
    {
        m_machine.serverAgents.Subkey("VTNRACK").Create();
        m_machine.hostSnmp.SetDword("SetsEnabled", 0x19);
        m_machine.hostSnmp.SetDword("Timeout", 5001);
        m_machine.hostAgent.SetDword("HostFlags", 0x10);
        m_machine.activeDebugger.SetString("Debugger", "drwtsn32");
    }

    // A control's mark in the change mask is what it makes the page save.
    DWORD Written() const
    {
        DWORD written = 0;
        const auto mark = [&](const support::TestKey& key, const char* value,
                              const support::StoredValue& before, DWORD change) {
            if (key.Value(value) != before)
                written |= change;
        };
        const auto number = [](BYTE low, BYTE high = 0) {
            return support::StoredValue{REG_DWORD, {low, high, 0, 0}};
        };
        mark(m_machine.hostSnmp, "SetsEnabled", number(0x19), SetsChanged);
        mark(m_machine.hostSnmp, "Timeout", number(0x89, 0x13), IntervalChanged);
        mark(m_machine.hostAgent, "HostFlags", number(0x10), TelnetChanged);
        if (m_machine.parkedDebugger.Value("Debugger").has_value())
            written |= ExceptionTrapChanged;
        return written;
    }

    // Clicks the control and presses OK on whichever page.
    DWORD WrittenAfterClick(int control)
    {
        Open().Click(control);
        m_host.PressOk();
        return Written();
    }
};

TEST_F(OneControl, NothingIsSavedWithoutOne)
{
    Open();
    m_host.PressOk();
    EXPECT_EQ(Written(), 0);
}

TEST_F(OneControl, SetsSaveTheNumberOfSets)
{
    EXPECT_EQ(WrittenAfterClick(IDC_SNMP_SETS), SetsChanged);
    ExpectDword(m_machine.hostSnmp, "SetsEnabled", 0);
}

TEST_F(OneControl, RemoteRebootSavesTheNumberOfSets)
{
    EXPECT_EQ(WrittenAfterClick(IDC_SNMP_REMOTE_REBOOT), SetsChanged);
    ExpectDword(m_machine.hostSnmp, "SetsEnabled", 3);
}

TEST_F(OneControl, RackTrapsSaveTheNumberOfSets)
{
    EXPECT_EQ(WrittenAfterClick(IDC_SNMP_DISABLE_RACK_TRAPS), SetsChanged);
    ExpectDword(m_machine.hostSnmp, "SetsEnabled", 5);
}

TEST_F(OneControl, TelnetSavesTheHostFlags)
{
    EXPECT_EQ(WrittenAfterClick(IDC_SNMP_DISABLE_TELNET), TelnetChanged);
    ExpectDword(m_machine.hostAgent, "HostFlags", 1);
}

TEST_F(OneControl, TheExceptionTrapSwapsTheDebuggers)
{
    EXPECT_EQ(WrittenAfterClick(IDC_SNMP_EXCEPTION_TRAP), ExceptionTrapChanged);
    ExpectString(m_machine.activeDebugger, "Debugger", "vtndbg -p %ld -e %ld -g");
    ExpectString(m_machine.parkedDebugger, "Debugger", "drwtsn32");
}

TEST_F(OneControl, TheIntervalIsSavedForEveryAgent)
{
    Open().Select(IDC_SNMP_INTERVAL, 15);
    m_host.PressOk();
    EXPECT_EQ(Written(), IntervalChanged);
    ExpectDword(m_machine.hostSnmp, "Timeout", 3600000);
    ExpectDword(m_machine.hostAgent, "Timeout", 3600000);
    ExpectAbsent(m_machine.parkedDebugger, "Timeout");
}

TEST_F(OneControl, ABoxClickedTwiceStillSaves)
{
    const DialogDriver page = Open();
    page.Click(IDC_SNMP_DISABLE_TELNET);
    page.Click(IDC_SNMP_DISABLE_TELNET);
    m_host.PressOk();
    EXPECT_EQ(Written(), TelnetChanged);
    ExpectDword(m_machine.hostAgent, "HostFlags", 0);
}

TEST_F(OneControl, IsSavedFromAPageThatWasLeft)
{
    Open().Click(IDC_SNMP_DISABLE_TELNET);
    m_host.Page("Storage");
    m_host.PressOk();
    EXPECT_EQ(Written(), TelnetChanged);
}

TEST_F(OneControl, IsNotSavedOnCancel)
{
    Open().Click(IDC_SNMP_DISABLE_TELNET);
    m_host.PressCancel();
    EXPECT_EQ(Written(), 0);
}

// --- restart

// How many boxes an OK shows on a machine whose agents are stopped.
class RestartOffer : public OneControl
{
  protected:
    RestartOffer() { m_services.Add("VtMgHost", {.states = {support::ServiceState(SERVICE_STOPPED)}}); }

    support::ServiceScript m_services{m_host.Module()};
};

TEST_F(RestartOffer, FollowsAnyChangedControl)
{
    for (const int control : {IDC_SNMP_SETS, IDC_SNMP_REMOTE_REBOOT, IDC_SNMP_EXCEPTION_TRAP,
                              IDC_SNMP_DISABLE_TELNET, IDC_SNMP_DISABLE_RACK_TRAPS})
    {
        m_machine.hostSnmp.SetDword("SetsEnabled", 1);
        m_boxes.Answer(IDNO);
        Open().Click(control);
        m_host.PressOk();
    }
    m_boxes.Answer(IDNO);
    Open().Select(IDC_SNMP_INTERVAL, 3);
    m_host.PressOk();
    EXPECT_EQ(m_boxes.Shown().size(), 6);
}

TEST_F(RestartOffer, DoesNotFollowAServerRoleAlone)
{
    Open().Type(IDC_SNMP_SERVER_ROLE, "Mail");
    m_host.PressOk();
    support::ExpectBoxes(m_boxes, {});
}

// --- server role

TEST_F(SnmpPage, SavesTheServerRole)
{
    Open().Type(IDC_SNMP_SERVER_ROLE, "Mail & print, 2nd floor");
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", "Mail & print, 2nd floor");
}

TEST_F(SnmpPage, SavesTheServerRoleWithoutHavingBeenShown)
{
    m_machine.product.SetString("ServerRole", "Mail");
    m_host.Open();
    m_host.Page("Storage");
    m_machine.product.DeleteValue("ServerRole");
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", "Mail");
}

TEST_F(SnmpPage, TakesNoMoreThan64CharactersOfAServerRole)
{
    const DialogDriver page = Open();
    page.Type(IDC_SNMP_SERVER_ROLE, std::string(65, 'r'));
    EXPECT_EQ(page.Text(IDC_SNMP_SERVER_ROLE), std::string(64, 'r'));
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", std::string(64, 'r'));
}

class StoredRole : public SnmpPage, public testing::WithParamInterface<std::size_t>
{
};

TEST_P(StoredRole, OfAnyLengthIsShownAndStaysUnlessItIsEdited)
{
    const std::string role(GetParam(), 'r');
    m_machine.product.SetString("ServerRole", role);
    const DialogDriver page = Open();
    EXPECT_EQ(page.Text(IDC_SNMP_SERVER_ROLE), role);
    EXPECT_TRUE(m_host.TurnTo("Storage"));
    EXPECT_TRUE(m_host.TurnTo("SNMP Settings"));
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", role);
}

INSTANTIATE_TEST_SUITE_P(Lengths, StoredRole, testing::Values(64, 65, 1000));

TEST_F(SnmpPage, RefusesAnEditedServerRoleThatIsStillTooLong)
{
    m_machine.product.SetString("ServerRole", std::string(70, 'r'));
    const DialogDriver page = Open();
    page.SetText(IDC_SNMP_SERVER_ROLE, std::string(69, 'r'));
    m_boxes.Answer(IDOK);
    m_host.Sheet().Click(IDOK);
    EXPECT_FALSE(m_host.HasEnded());
    ASSERT_EQ(m_boxes.Shown().size(), 1);
    EXPECT_EQ(m_boxes.Shown().front().text, "Enter no more than 64 characters.");
    EXPECT_EQ(m_boxes.Shown().front().caption, "Norvale Management Agents");
    page.SetText(IDC_SNMP_SERVER_ROLE, std::string(64, 'r'));
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", std::string(64, 'r'));
}

// --- help

TEST_F(SnmpPage, HasItsHelpTopic)
{
    const support::HelpRecorder help(m_host.Module());
    Open();
    m_host.PressKey(VK_F1);
    m_host.PressCancel();
    ASSERT_EQ(help.Requests().size(), 1);
    EXPECT_EQ(help.Requests().front().topic, "html\\vtnm7usw.htm");
}

// --- refusals

TEST_F(SnmpPage, ARefusedSaveEndsTheSheetWithAMessage)
{
    Open().Click(IDC_SNMP_DISABLE_TELNET);
    m_machine.hostAgent.Delete();
    m_boxes.Answer(IDOK);
    m_host.PressOk();
    support::ExpectBoxes(
        m_boxes, {{nullptr, "You do not have access to change the configuration of the Management Agents.",
                   "Management Agents Error", MB_ICONHAND}});
}

} // namespace
