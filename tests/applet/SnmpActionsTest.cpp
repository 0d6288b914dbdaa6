// The SNMP Settings page's two buttons: the test trap, and the clearing of the thresholds.
#include "applet/AppletTest.h"
#include "pages/Thresholds.h"
#include "resources/resource.h"
#include "support/FakeClock.h"
#include "support/HostAgent.h"
#include "support/RegistryCalls.h"
#include "support/ServiceScript.h"

namespace {

using support::DialogDriver;
using support::ServiceState;
using support::ShownBox;
using Calls = std::vector<std::string>;

constexpr char applet[] = "Norvale Management Agents";
constexpr char errorCaption[] = "Management Agents Error";

// A machine whose services, clock and user do what the test says, with one log of what happens on it.
class SnmpActions : public testing::Test
{
  protected:
    SnmpActions()
    {
        m_traps.SetBinary("TrapData", {1});
        SetHostState(SERVICE_RUNNING);
        m_thresholds.Delete();
        for (const char* key : thresholdKeys)
            support::TestKey(key).SetDword("Rising", 90);
    }

    // SNMP and the two services that depend on it.
    void SetHostState(DWORD state)
    {
        m_services.Add("SNMP", {.displayName = "SNMP Service",
                                .states = {ServiceState(SERVICE_RUNNING)},
                                .dependents = {"VtMgStor", "VtMgHost"}});
        m_services.Add("VtMgHost", {.displayName = "Host Agents", .states = {ServiceState(state)}});
        m_services.Add("VtMgStor",
                       {.displayName = "Storage Agents", .states = {ServiceState(SERVICE_RUNNING)}});
    }

    // Presses a button of the page, and closes the sheet when what it does has been done.
    void Press(int button)
    {
        m_host.Open();
        const DialogDriver page = m_host.Page("SNMP Settings");
        m_owner = page.Window();
        m_log.Clear();
        page.Click(button);
        m_host.PressCancel();
    }
    void Clear() { Press(IDC_SNMP_CLEAR_THRESHOLDS); }

    static bool HasThresholds() { return support::TestKey(thresholdKeys[0]).Exists(); }
    [[nodiscard]] Calls Operations() const { return m_log.CallsOf({"ControlService", "StartServiceA"}); }

    TestMachine m_machine;
    support::AppletHost m_host{appletPath};
    support::CallLog m_log;
    support::MessageBoxScript m_boxes{m_host.Module(), &m_log};
    support::SavedKey m_traps{"SYSTEM\\VortanHost\\Host\\Component\\GenericTrap"};
    support::SavedKey m_thresholds{"SYSTEM\\VortanPermanent"};
    support::ServiceScript m_services{m_host.Module(), &m_log};
    support::FakeClock m_clock{m_host.Module(), 1000, &m_log};
    HWND m_owner = nullptr;
};

// --- test trap

class TestTrapButton : public SnmpActions
{
  protected:
    // The one box that the button shows, which belongs to the page.
    void ExpectBox(const std::string& text, const std::string& caption, UINT style,
                   support::Location where = support::Location::current())
    {
        m_boxes.Answer(IDOK, where);
        Press(IDC_SNMP_TEST_TRAP);
        support::ExpectEqual({ShownBox{m_owner, text, caption, style}}, m_boxes.Shown(), "boxes", where);
    }
};

constexpr char sendingLibrary[] = "..\\unit\\snmp\\host_agent_stand_in.dll";
constexpr char notGenerated[] =
    "The trap could not be generated.\n\nPlease insure that the Host Agent is enabled and running.";

TEST_F(TestTrapButton, TellsThatTheAlerterIsNotReady)
{
    ExpectBox("The Management Agents Remote Alerter agent has not finished initializing or is not enabled.  "
              "The test "
              "trap was not sent.",
              applet, MB_ICONINFORMATION);
}

TEST_F(TestTrapButton, TellsThatTheTrapCouldNotBeGenerated)
{
    const support::ReadyAlerter alerter;
    ExpectBox(notGenerated, errorCaption, MB_ICONEXCLAMATION);
}

TEST_F(TestTrapButton, TellsThatTheHostAgentRefusedTheTrap)
{
    const support::ReadyAlerter alerter;
    const support::InstalledHostAgent hostAgent(sendingLibrary, 1);
    ExpectBox(notGenerated, errorCaption, MB_ICONEXCLAMATION);
}

TEST_F(TestTrapButton, ShowsTheTrapThatWasSent)
{
    const support::ReadyAlerter alerter;
    const support::InstalledHostAgent hostAgent(sendingLibrary);
    m_boxes.Answer(IDOK);
    Press(IDC_SNMP_TEST_TRAP);
    const std::string text = support::InstalledHostAgent::SentText();
    EXPECT_TRUE(text.starts_with("Management Agents Test Trap sent - ")) << text;
    EXPECT_EQ(m_boxes.Shown(),
              (std::vector{ShownBox{m_owner, "The following trap has been sent:\n\n\"" + text + "\"", applet,
                                    MB_ICONINFORMATION}}));
}

TEST_F(TestTrapButton, ChangesNoSetting)
{
    m_boxes.Answer(IDOK);
    m_machine.hostSnmp.SetDword("SetsEnabled", 0x1F);
    m_host.Open();
    m_host.Page("SNMP Settings").Click(IDC_SNMP_TEST_TRAP);
    m_host.PressOk();
    support::ExpectDword(m_machine.hostSnmp, "SetsEnabled", 0x1F);
}

// --- clearing the thresholds

constexpr char question[] =
    "The Management Agents service must be stopped before clearing thresholds.\n\nWould you "
    "like to stop the Management Agents now?";
constexpr char cleared[] = "The thresholds have been cleared.";
constexpr char notCleared[] = "Error clearing the thresholds.";

// What the user sees.
const ShownBox questionBox{nullptr, question, applet, MB_YESNO | MB_ICONINFORMATION};
const ShownBox clearedBox{nullptr, cleared, applet, MB_ICONINFORMATION};
const ShownBox notClearedBox{nullptr, notCleared, applet, MB_ICONHAND};

using ClearThresholds = SnmpActions;

TEST_F(ClearThresholds, DeletesAtOnceWhenTheHostIsStopped)
{
    SetHostState(SERVICE_STOPPED);
    m_boxes.Answer(IDOK);
    Clear();
    support::ExpectBoxes(m_boxes, {clearedBox});
    EXPECT_EQ(Operations(), Calls());
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>());
    EXPECT_FALSE(HasThresholds());
}

TEST_F(ClearThresholds, AsksAndLeavesEverythingAsItIsUnlessTheAnswerIsYes)
{
    m_boxes.Answer(IDNO).Answer(IDCANCEL);
    Clear();
    Clear();
    support::ExpectBoxes(m_boxes, {questionBox, questionBox});
    EXPECT_EQ(Operations(), Calls());
    EXPECT_TRUE(HasThresholds());
}

TEST_F(ClearThresholds, BoxesBelongToThePage)
{
    m_boxes.Answer(IDNO);
    Clear();
    ASSERT_EQ(m_boxes.Shown().size(), 1);
    EXPECT_EQ(m_boxes.Shown().front().owner, m_owner);
}

TEST_F(ClearThresholds, StopsDeletesAndStartsInThisOrder)
{
    m_services.Add("VtnWebWmi", {.displayName = "Web Agent", .states = {ServiceState(SERVICE_RUNNING)}});
    m_boxes.Answer(IDYES).Answer(IDOK);
    const support::RegistryCalls registry(m_host.Module(), &m_log);
    Clear();
    Calls expected = {std::string("MessageBoxA ") + question,
                      "Sleep 1000",
                      "ControlService VtnWebWmi 1",
                      "Sleep 1000",
                      "ControlService VtMgStor 1",
                      "Sleep 1000",
                      "ControlService VtMgHost 1",
                      "Sleep 1000",
                      "ControlService SNMP 1"};
    for (const char* key : thresholdKeys)
        expected.push_back(std::string("RegDeleteKeyA HKLM\\") + key);
    for (const char* service : {"SNMP", "VtMgHost", "VtMgStor", "VtnWebWmi"}) {
        expected.emplace_back("Sleep 1000");
        expected.push_back(std::string("StartServiceA ") + service);
    }
    expected.push_back(std::string("MessageBoxA ") + cleared);
    expected.emplace_back(
        "Sleep 1000"); // until the last of the please-wait texts has been readable for a second
    EXPECT_EQ(m_log.CallsOf({"MessageBoxA", "Sleep", "ControlService", "StartServiceA", "RegDeleteKeyA"}),
              expected);
}

TEST_F(ClearThresholds, StopsAndStartsAHostThatIsPaused)
{
    SetHostState(SERVICE_PAUSED);
    m_boxes.Answer(IDYES).Answer(IDOK);
    Clear();
    support::ExpectBoxes(m_boxes, {questionBox, clearedBox});
    EXPECT_EQ(Operations(),
              (Calls{"ControlService VtMgStor 1", "ControlService VtMgHost 1", "ControlService SNMP 1",
                     "StartServiceA SNMP", "StartServiceA VtMgHost", "StartServiceA VtMgStor"}));
}

TEST_F(ClearThresholds, LeavesAWebAgentOnItsWaySomewhereAlone)
{
    m_services.Add("VtnWebWmi",
                   {.displayName = "Web Agent", .states = {ServiceState(SERVICE_START_PENDING)}});
    m_boxes.Answer(IDYES).Answer(IDOK);
    Clear();
    EXPECT_EQ(Operations().front(), "ControlService VtMgStor 1");
    EXPECT_EQ(Operations().back(), "StartServiceA VtMgStor");
}

TEST_F(ClearThresholds, TellsWhenTheHostIsOnItsWaySomewhere)
{
    const ShownBox pending{
        nullptr,
        "The Management Agents service is in a pending state.\n\nUse the Services applet in the "
        "Control Panel to control the Management Agents.",
        applet, MB_ICONHAND};
    for (const int state :
         {SERVICE_START_PENDING, SERVICE_STOP_PENDING, SERVICE_CONTINUE_PENDING, SERVICE_PAUSE_PENDING})
    {
        SetHostState(static_cast<DWORD>(state));
        m_boxes.Answer(IDOK);
        Clear();
    }
    support::ExpectBoxes(m_boxes, {pending, pending, pending, pending});
    EXPECT_TRUE(HasThresholds());
}

TEST_F(ClearThresholds, TellsWhenTheHostIsInAnUnknownState)
{
    const ShownBox unknown{
        nullptr,
        "The Management Agents service is in an unknown state.\n\nUse the Services applet in the "
        "Control Panel to control the Management Agents.",
        applet, MB_ICONHAND};
    for (const DWORD state : {0U, 8U}) {
        SetHostState(state);
        m_boxes.Answer(IDOK);
        Clear();
    }
    support::ExpectBoxes(m_boxes, {unknown, unknown});
    EXPECT_TRUE(HasThresholds());
}

TEST_F(ClearThresholds, SaysNothingWhenTheHostCannotBeAsked)
{
    m_services.Fail("QueryServiceStatus", "VtMgHost", ERROR_INVALID_HANDLE);
    Clear();
    m_services.Fail("OpenServiceA", "VtMgHost", ERROR_SERVICE_DOES_NOT_EXIST);
    Clear();
    support::ExpectBoxes(m_boxes, {});
    EXPECT_TRUE(HasThresholds());
}

TEST_F(ClearThresholds, GoesOnWhenServicesDoNotStop)
{
    m_services.Fail("ControlService", "VtMgStor", ERROR_SERVICE_CANNOT_ACCEPT_CTRL);
    m_boxes.Answer(IDYES).Answer(IDOK).Answer(IDOK).Answer(IDOK);
    Clear();
    const auto couldNotStop = [](const std::string& service) {
        return ShownBox{nullptr,
                        "Could not stop the " + service +
                            " service.\n\nUse the Services applet in the Control "
                            "Panel to control the service.",
                        applet, MB_ICONHAND};
    };
    // SNMP does not stop either while a service that depends on it runs.
    support::ExpectBoxes(m_boxes,
                         {questionBox, couldNotStop("Storage Agents"), couldNotStop("SNMP"), clearedBox});
    EXPECT_FALSE(HasThresholds());
}

TEST_F(ClearThresholds, TellsAnErrorAfterTheAgentsRunAgain)
{
    support::TestKey(thresholdKeys[0]).Subkey("Row").Create();
    m_boxes.Answer(IDYES).Answer(IDOK);
    Clear();
    support::ExpectBoxes(m_boxes, {questionBox, notClearedBox});
    EXPECT_EQ(m_services.State("VtMgHost"), SERVICE_RUNNING);
    EXPECT_FALSE(support::TestKey(thresholdKeys[4]).Exists());
}

TEST_F(ClearThresholds, PassesOverAFailureOfTheLastKeyAlone)
{
    SetHostState(SERVICE_STOPPED);
    support::TestKey(thresholdKeys[4]).Subkey("0").Create();
    m_boxes.Answer(IDOK);
    Clear();
    support::ExpectBoxes(m_boxes, {clearedBox});
}

TEST_F(ClearThresholds, ClosesEveryHandleAndThePleaseWaitDialog)
{
    m_boxes.Answer(IDYES).Answer(IDOK);
    Clear();
    EXPECT_EQ(m_services.OpenHandles(), 0);
    EXPECT_EQ(m_host.Thread().Windows(), std::vector<HWND>());
}

} // namespace
