// The SNMP Settings page's button that clears the thresholds.
#include "applet/SnmpActions.h"
#include "support/RegistryCalls.h"

#include <utility>

namespace {

using support::ServiceState;
using support::ShownBox;

constexpr char question[] =
    "The Management Agents service must be stopped before clearing thresholds.\n\nWould you "
    "like to stop the Management Agents now?";
constexpr char cleared[] = "The thresholds have been cleared.";
constexpr char notCleared[] = "Error clearing the thresholds.";

// What the user sees.
const ShownBox questionBox{nullptr, question, appletCaption, MB_YESNO | MB_ICONINFORMATION};
const ShownBox clearedBox{nullptr, cleared, appletCaption, MB_ICONINFORMATION};
const ShownBox notClearedBox{nullptr, notCleared, appletCaption, MB_ICONHAND};

// Why a service is to be seen to by hand; `failure` is "start" or "stop".
ShownBox FailureBox(const std::string& failure, const std::string& service)
{
    return {nullptr,
            "Could not " + failure + " the " + service +
                " service.\n\nUse the Services applet in the Control Panel to control the service.",
            appletCaption, MB_ICONHAND};
}

class ClearThresholds : public SnmpActions
{
  protected:
    void AddWebAgent(DWORD state)
    {
        m_services.Add("VtnWebWmi", {.displayName = "Web Agent", .states = {ServiceState(state)}});
    }

    void Clear(support::Location where = support::Location::current())
    {
        Press(IDC_SNMP_CLEAR_THRESHOLDS, where);
    }

    static bool HasThresholds() { return support::TestKey(thresholdKeys[0]).Exists(); }
    [[nodiscard]] Calls Operations() const { return m_log.CallsOf({"ControlService", "StartServiceA"}); }
};

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

TEST_F(ClearThresholds, DoesNothingUnlessTheAnswerIsYes)
{
    m_boxes.Answer(IDNO).Answer(IDCANCEL);
    Clear();
    Clear();
    support::ExpectBoxes(m_boxes, {questionBox, questionBox});
    EXPECT_EQ(Operations(), Calls());
    EXPECT_TRUE(HasThresholds());
}

TEST_F(ClearThresholds, StopsDeletesAndStartsInThisOrder)
{
    AddWebAgent(SERVICE_RUNNING);
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

TEST_F(ClearThresholds, IsNotBegunTwiceByASentMessage)
{
    m_host.Open();
    const support::DialogDriver page = m_host.Page("SNMP Settings");
    const HWND button = page.Control(IDC_SNMP_CLEAR_THRESHOLDS);
    bool isSent = false;
    m_clock.OnSleep([&](DWORD) {
        if (!std::exchange(isSent, true))
            support::SendFromElsewhere(page.Window(), WM_COMMAND, IDC_SNMP_CLEAR_THRESHOLDS,
                                       reinterpret_cast<LPARAM>(button));
    });
    m_boxes.Answer(IDYES).Answer(IDOK).Answer(IDNO);
    page.Click(IDC_SNMP_CLEAR_THRESHOLDS);
    ASSERT_TRUE(m_boxes.WaitForBoxes(3));
    support::ExpectBoxes(m_boxes, {questionBox, clearedBox, questionBox});
    m_host.PressCancel();
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

TEST_F(ClearThresholds, StopsAPausedWebAgentFirst)
{
    AddWebAgent(SERVICE_PAUSED);
    m_boxes.Answer(IDYES).Answer(IDOK);
    Clear();
    EXPECT_EQ(Operations().front(), "ControlService VtnWebWmi 1");
    EXPECT_EQ(Operations().back(), "StartServiceA VtnWebWmi");
}

TEST_F(ClearThresholds, StartsAWebAgentThatStoodStill)
{
    AddWebAgent(SERVICE_STOPPED);
    m_boxes.Answer(IDYES).Answer(IDOK);
    Clear();
    EXPECT_EQ(Operations().front(), "ControlService VtMgStor 1");
    EXPECT_EQ(Operations().back(), "StartServiceA VtnWebWmi");
    EXPECT_EQ(m_services.State("VtnWebWmi"), SERVICE_RUNNING);
}

TEST_F(ClearThresholds, LeavesAWebAgentOnItsWaySomewhereAlone)
{
    AddWebAgent(SERVICE_START_PENDING);
    m_boxes.Answer(IDYES).Answer(IDOK);
    Clear();
    EXPECT_EQ(Operations().front(), "ControlService VtMgStor 1");
    EXPECT_EQ(Operations().back(), "StartServiceA VtMgStor");
}

TEST_F(ClearThresholds, ReportsAHostInAPendingState)
{
    const ShownBox pending{
        nullptr,
        "The Management Agents service is in a pending state.\n\nUse the Services applet in the "
        "Control Panel to control the Management Agents.",
        appletCaption, MB_ICONHAND};
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

TEST_F(ClearThresholds, ReportsAHostInAnUnknownState)
{
    const ShownBox unknown{
        nullptr,
        "The Management Agents service is in an unknown state.\n\nUse the Services applet in the "
        "Control Panel to control the Management Agents.",
        appletCaption, MB_ICONHAND};
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

TEST_F(ClearThresholds, SaysNothingWhenTheServiceManagerDoesNotOpen)
{
    m_services.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    Clear();
    support::ExpectBoxes(m_boxes, {});
    EXPECT_TRUE(HasThresholds());
}

TEST_F(ClearThresholds, GoesOnWhenServicesDoNotStop)
{
    m_services.Fail("ControlService", "VtMgStor", ERROR_SERVICE_CANNOT_ACCEPT_CTRL);
    m_boxes.Answer(IDYES).Answer(IDOK).Answer(IDOK).Answer(IDOK);
    Clear();
    // SNMP does not stop either while a service that depends on it runs.
    support::ExpectBoxes(
        m_boxes, {questionBox, FailureBox("stop", "Storage Agents"), FailureBox("stop", "SNMP"), clearedBox});
    EXPECT_FALSE(HasThresholds());
}

TEST_F(ClearThresholds, GoesOnWhenAServiceDoesNotStart)
{
    m_services.Fail("StartServiceA", "VtMgHost", ERROR_SERVICE_LOGON_FAILED);
    m_boxes.Answer(IDYES).Answer(IDOK).Answer(IDOK);
    Clear();
    support::ExpectBoxes(m_boxes, {questionBox, FailureBox("start", "Host Agents"), clearedBox});
    EXPECT_EQ(Operations().back(), "StartServiceA VtMgStor");
    EXPECT_FALSE(HasThresholds());
}

TEST_F(ClearThresholds, ReportsAnErrorOnceTheAgentsRun)
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

TEST_F(ClearThresholds, OpensTheServicesThatDecideForWhateverMayFollow)
{
    m_boxes.Answer(IDNO);
    Clear();
    Calls opened = m_log.CallsOf({"OpenSCManagerA", "OpenServiceA"});
    opened.resize(4);
    EXPECT_EQ(opened, (Calls{"OpenSCManagerA (null) 0x20000000", "OpenServiceA SNMP 0xf01ff",
                             "OpenServiceA VtMgHost 0xf01ff", "OpenServiceA VtnWebWmi 0xf01ff"}));
}

TEST_F(ClearThresholds, ClosesEveryHandleAndThePleaseWaitDialog)
{
    m_boxes.Answer(IDYES).Answer(IDOK);
    Clear();
    EXPECT_EQ(m_services.OpenHandles(), 0);
    EXPECT_EQ(m_host.Thread().Windows(), std::vector<HWND>());
}

} // namespace
