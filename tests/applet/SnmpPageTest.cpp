// The SNMP Settings page through its window.
#include "applet/SnmpPageTest.h"
#include "pages/core/SnmpSettings.h"
#include "resources/resource.h"
#include "support/ServiceScript.h"

#include <array>
#include <cstdlib>
#include <prsht.h>

namespace {

using support::DialogDriver;
using support::ExpectAbsent;
using support::ExpectDword;
using support::ExpectString;

constexpr int applyButton = 0x3021; // of the sheet

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
        m_machine.hostSnmp.SetDword("SetsEnabled", 0x80000007);
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
        m_machine.hostSnmp.SetDword("SetsEnabled", 0x80000001);
        m_machine.hostSnmp.SetDword("Timeout", 5001);
        m_machine.hostAgent.SetDword("HostFlags", 0x80000000);
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
        const auto number = [](BYTE lowest, BYTE low, BYTE highest) {
            return support::StoredValue{REG_DWORD, {lowest, low, 0, highest}};
        };
        mark(m_machine.hostSnmp, "SetsEnabled", number(0x01, 0, 0x80), SetsChanged);
        mark(m_machine.hostSnmp, "Timeout", number(0x89, 0x13, 0), IntervalChanged);
        mark(m_machine.hostAgent, "HostFlags", number(0, 0, 0x80), TelnetChanged);
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

// --- Apply

class ApplyNotice : public SnmpPage
{
  protected:
    // The windows of a message that a page sends to its sheet.
    struct Notice
    {
        HWND sheet;
        HWND page;
        bool operator==(const Notice&) const = default;
    };

    // What tells the sheet, while the user does something on the page, that its settings have been changed.
    template <typename Action>
    std::vector<Notice> NoticesOf(Action action)
    {
        std::vector<Notice> notices;
        const auto hook = support::HookImport<decltype(SendMessageA)>(
            m_host.Module(), "SendMessageA",
            [&](auto original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
                if (message == PSM_CHANGED)
                    notices.push_back({window, reinterpret_cast<HWND>(wParam)});
                return original(window, message, wParam, lParam);
            });
        action(m_host.ActivePage());
        return notices;
    }

    void ExpectNoApplyButton() const { EXPECT_FALSE(m_host.Sheet().IsVisible(applyButton)); }
};

TEST_F(ApplyNotice, FollowsEachCharacterOfTheServerRole)
{
    const DialogDriver page = Open();
    const Notice notice{m_host.Sheet().Window(), page.Window()};
    EXPECT_EQ(NoticesOf([](const DialogDriver& shown) { shown.Type(IDC_SNMP_SERVER_ROLE, "ab"); }),
              (std::vector{notice, notice}));
    ExpectNoApplyButton();
    m_host.PressCancel();
}

TEST_F(ApplyNotice, FollowsNoOtherControl)
{
    m_machine.serverAgents.Subkey("VTNRACK").Create();
    Open();
    EXPECT_EQ(NoticesOf([](const DialogDriver& page) {
                  for (const int box : {IDC_SNMP_SETS, IDC_SNMP_REMOTE_REBOOT, IDC_SNMP_EXCEPTION_TRAP,
                                        IDC_SNMP_DISABLE_TELNET, IDC_SNMP_DISABLE_RACK_TRAPS})
                      page.Click(box);
                  page.Select(IDC_SNMP_INTERVAL, 3);
              }),
              std::vector<Notice>());
    ExpectNoApplyButton();
    m_host.PressCancel();
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
