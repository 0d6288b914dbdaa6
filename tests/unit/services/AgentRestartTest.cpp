// The restart of the agents: what is asked and reported, and in which order services stop and start.
#include "sysaccess/AgentRestart.h"
#include "imports/ImportHook.h"
#include "ScriptedMachine.h"

namespace {

using support::ServiceState;

constexpr char restartQuestion[] = "The Management Agents configuration has been changed.\n\nWould you like "
                                   "to restart the Management Agents now?";
constexpr char startQuestion[] = "The Management Agents configuration has been changed.\n\nWould you like to "
                                 "start the Management Agents now?";
constexpr char isPending[] =
    "The Management Agents service is in a pending state.\n\nUse the Services applet "
    "in the Control Panel to control the Management Agents.";
constexpr char isUnknown[] = "The Management Agents service is in an unknown state.\n\nUse the Services "
                             "applet in the Control Panel to control the Management Agents.";
constexpr char applet[] = "Norvale Management Agents";

// A machine with two agents that depend on SNMP, one of them their host.
class RestartAgents : public ScriptedMachine
{
  protected:
    void AddAgents(DWORD state)
    {
        m_manager.Add("SNMP", {.displayName = "SNMP Service",
                               .states = {ServiceState(state)},
                               .dependents = {"VtMgStor", "VtMgHost"}});
        AddInState("VtMgHost", state);
        AddInState("VtMgStor", state);
    }

    void Restart() { RestartAgentServices(nullptr); }

    // The stops and starts alone.
    [[nodiscard]] Calls Operations() const { return m_log.CallsOf({"StartServiceA", "ControlService"}); }
};

const Calls stopAll{"ControlService VtMgStor 1", "ControlService VtMgHost 1", "ControlService SNMP 1"};
const Calls startAll{"StartServiceA SNMP", "StartServiceA VtMgHost", "StartServiceA VtMgStor"};

Calls operator+(Calls first, const Calls& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST_F(RestartAgents, StartsInTheReverseOrderOfStopping)
{
    AddAgents(SERVICE_RUNNING);
    m_user.Answer(IDYES);
    Restart();
    EXPECT_EQ(Actions(),
              (Calls{std::string("MessageBoxA ") + restartQuestion, "Sleep 1000", "ControlService VtMgStor 1",
                     "Sleep 1000", "ControlService VtMgHost 1", "Sleep 1000", "ControlService SNMP 1",
                     "Sleep 1000", "StartServiceA SNMP", "Sleep 1000", "StartServiceA VtMgHost", "Sleep 1000",
                     "StartServiceA VtMgStor", "Sleep 1000"}));
}

TEST_F(RestartAgents, AsksWhetherToRestartAgentsThatRun)
{
    for (const DWORD state : States{SERVICE_RUNNING, SERVICE_PAUSED}) {
        AddAgents(state);
        m_user.Answer(IDNO);
        Restart();
    }
    const support::ShownBox box{nullptr, restartQuestion, applet, MB_YESNO | MB_ICONINFORMATION};
    support::ExpectBoxes(m_user, {box, box});
}

TEST_F(RestartAgents, RestartsAgentsThatArePaused)
{
    AddAgents(SERVICE_PAUSED);
    m_user.Answer(IDYES);
    Restart();
    EXPECT_EQ(Operations(), stopAll + startAll);
}

TEST_F(RestartAgents, OffersToStartStoppedAgents)
{
    AddAgents(SERVICE_STOPPED);
    AddInState("VtMgStor", SERVICE_RUNNING);
    m_user.Answer(IDYES);
    Restart();
    support::ExpectBoxes(m_user, {{nullptr, startQuestion, applet, MB_YESNO | MB_ICONINFORMATION}});
    EXPECT_EQ(Operations(), (Calls{"StartServiceA SNMP", "StartServiceA VtMgHost"}));
}

TEST_F(RestartAgents, DoesNothingUnlessTheAnswerIsYes)
{
    AddAgents(SERVICE_RUNNING);
    for (const int answer : {IDNO, IDCANCEL, 0}) {
        m_user.Answer(answer);
        Restart();
    }
    EXPECT_EQ(Operations(), Calls());
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>());
}

TEST_F(RestartAgents, ReportsAHostInAPendingState)
{
    for (const DWORD state :
         States{SERVICE_START_PENDING, SERVICE_STOP_PENDING, SERVICE_CONTINUE_PENDING, SERVICE_PAUSE_PENDING})
    {
        AddAgents(state);
        m_user.Answer(IDOK);
        Restart();
    }
    const support::ShownBox box{nullptr, isPending, applet, MB_ICONHAND};
    support::ExpectBoxes(m_user, {box, box, box, box});
    EXPECT_EQ(Operations(), Calls());
}

TEST_F(RestartAgents, ReportsAHostInAnUnknownState)
{
    for (const DWORD state : States{0, 8}) {
        AddAgents(state);
        m_user.Answer(IDOK);
        Restart();
    }
    const support::ShownBox box{nullptr, isUnknown, applet, MB_ICONHAND};
    support::ExpectBoxes(m_user, {box, box});
    EXPECT_EQ(Operations(), Calls());
}

TEST_F(RestartAgents, SaysNothingWithoutAHostService)
{
    AddInState("SNMP", SERVICE_RUNNING);
    Restart();
    support::ExpectBoxes(m_user, {});
    EXPECT_EQ(Operations(), Calls());
}

TEST_F(RestartAgents, SaysNothingWhenTheHostCannotBeAsked)
{
    AddAgents(SERVICE_RUNNING);
    m_manager.Fail("QueryServiceStatus", "VtMgHost", ERROR_INVALID_HANDLE);
    Restart();
    support::ExpectBoxes(m_user, {});
}

TEST_F(RestartAgents, SaysNothingWhenTheManagerCannotBeOpened)
{
    AddAgents(SERVICE_RUNNING);
    m_manager.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    Restart();
    support::ExpectBoxes(m_user, {});
}

TEST_F(RestartAgents, StopsTheWebAgentFirstAndStartsItLast)
{
    for (const DWORD state : States{SERVICE_RUNNING, SERVICE_PAUSED}) {
        m_log.Clear();
        AddAgents(SERVICE_RUNNING);
        AddInState("VtnWebWmi", state);
        m_user.Answer(IDYES);
        Restart();
        EXPECT_EQ(Operations(), Calls{"ControlService VtnWebWmi 1"} + stopAll + startAll +
                                    Calls{"StartServiceA VtnWebWmi"});
    }
}

TEST_F(RestartAgents, StartsAWebAgentThatWasStopped)
{
    AddAgents(SERVICE_RUNNING);
    AddInState("VtnWebWmi", SERVICE_STOPPED);
    m_user.Answer(IDYES);
    Restart();
    EXPECT_EQ(Operations(), stopAll + startAll + Calls{"StartServiceA VtnWebWmi"});
}

TEST_F(RestartAgents, SkipsAPendingOrUnreachableWebAgent)
{
    for (const DWORD state : States{SERVICE_START_PENDING, SERVICE_STOP_PENDING, SERVICE_CONTINUE_PENDING,
                                    SERVICE_PAUSE_PENDING, 0, 8})
    {
        m_log.Clear();
        AddAgents(SERVICE_RUNNING);
        AddInState("VtnWebWmi", state);
        m_user.Answer(IDYES);
        Restart();
        EXPECT_EQ(Operations(), stopAll + startAll) << state;
        // Six pauses and the last text's second: none is spent on the web agent.
        EXPECT_EQ(m_log.CallsOf({"Sleep"}).size(), 7U) << state;
    }
}

TEST_F(RestartAgents, SkipsAWebAgentInAnUnreadableState)
{
    AddAgents(SERVICE_RUNNING);
    AddInState("VtnWebWmi", SERVICE_RUNNING);
    m_manager.Fail("QueryServiceStatus", "VtnWebWmi", ERROR_INVALID_HANDLE);
    m_user.Answer(IDYES);
    Restart();
    EXPECT_EQ(Operations(), stopAll + startAll);
}

TEST_F(RestartAgents, RestartsSnmpAloneWithoutItsDependents)
{
    AddAgents(SERVICE_RUNNING);
    AddInState("SNMP", SERVICE_RUNNING);
    m_manager.Fail("EnumDependentServicesA", "SNMP", ERROR_ACCESS_DENIED);
    m_user.Answer(IDYES);
    Restart();
    EXPECT_EQ(Operations(), (Calls{"ControlService SNMP 1", "StartServiceA SNMP"}));
}

TEST_F(RestartAgents, GoesOnAfterAServiceThatDoesNotStop)
{
    AddAgents(SERVICE_RUNNING);
    m_manager.Fail("ControlService", "VtMgStor", ERROR_SERVICE_REQUEST_TIMEOUT);
    m_user.Answer(IDYES).Answer(IDOK).Answer(IDOK);
    Restart();
    // SNMP does not stop without it.
    ASSERT_EQ(m_user.Shown().size(), 3U);
    EXPECT_EQ(m_user.Shown()[1].text, "Could not stop the VtMgStor display service.\n\nUse the Services "
                                      "applet in the Control Panel to control the service.");
    EXPECT_EQ(m_user.Shown()[2].text, "Could not stop the SNMP service.\n\nUse the Services applet in the "
                                      "Control Panel to control the service.");
    EXPECT_EQ(Operations(), stopAll + Calls{"StartServiceA VtMgHost"});
}

TEST_F(RestartAgents, GoesOnAfterAServiceThatDoesNotStart)
{
    AddAgents(SERVICE_RUNNING);
    m_manager.Fail("StartServiceA", "VtMgHost", ERROR_SERVICE_LOGON_FAILED);
    m_user.Answer(IDYES).Answer(IDOK);
    Restart();
    ASSERT_EQ(m_user.Shown().size(), 2U);
    EXPECT_EQ(m_user.Shown()[1].text, "Could not start the VtMgHost display service.\n\nUse the Services "
                                      "applet in the Control Panel to control the service.");
    EXPECT_EQ(Operations(), stopAll + startAll);
}

TEST_F(RestartAgents, SkipsADependentThatIsNotInstalled)
{
    AddAgents(SERVICE_RUNNING);
    m_manager.Add("SNMP", {.displayName = "SNMP Service",
                           .states = {ServiceState(SERVICE_RUNNING)},
                           .dependents = {"VtMgHost", "Gone"}});
    m_user.Answer(IDYES);
    Restart();
    EXPECT_EQ(Operations(), (Calls{"ControlService VtMgHost 1", "ControlService SNMP 1", "StartServiceA SNMP",
                                   "StartServiceA VtMgHost"}));
    // The pause comes all the same.
    EXPECT_EQ(m_log.CallsOf({"Sleep"}), Calls(7, "Sleep 1000"));
}

TEST_F(RestartAgents, StopsAListThatNeedsTheLargerBuffer)
{
    AddAgents(SERVICE_RUNNING);
    std::vector<std::string> agents;
    Calls stops;
    for (int number = 10; number < 40; ++number) {
        agents.push_back("Agent" + std::to_string(number));
        stops.push_back("ControlService " + agents.back() + " 1");
        AddInState(agents.back(), SERVICE_RUNNING);
    }
    stops.emplace_back("ControlService SNMP 1");
    m_manager.Add("SNMP", {.states = {ServiceState(SERVICE_RUNNING)}, .dependents = agents});
    m_user.Answer(IDYES);
    Restart();
    Calls operations = Operations();
    operations.resize(stops.size());
    EXPECT_EQ(operations, stops);
}

TEST_F(RestartAgents, AsksAndReportsOverTheOwner)
{
    const HWND owner =
        CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    AddAgents(SERVICE_RUNNING);
    m_user.Answer(IDNO);
    RestartAgentServices(owner);
    EXPECT_EQ(m_user.Shown().at(0).owner, owner);
    DestroyWindow(owner);
}

TEST_F(RestartAgents, ClosesItsDialogBeforeTheServices)
{
    AddAgents(SERVICE_STOPPED);
    int dialogs = 0;
    const auto countDialogs = support::HookImport<decltype(CreateDialogParamA)>(
        GetModuleHandleA(nullptr), "CreateDialogParamA",
        [&](auto original, HINSTANCE module, LPCSTR dialog, HWND owner, DLGPROC procedure, LPARAM argument) {
            ++dialogs;
            return original(module, dialog, owner, procedure, argument);
        });
    m_user.Answer(IDYES);
    Restart();
    EXPECT_EQ(dialogs, 1);
    EXPECT_EQ(FindWindowA(nullptr, "Management Agents"), nullptr);
    const Calls ends = m_log.CallsOf({"Sleep", "CloseServiceHandle"});
    EXPECT_EQ(Calls(ends.end() - 3, ends.end()),
              (Calls{"Sleep 1000", "CloseServiceHandle VtMgHost", "CloseServiceHandle SNMP"}));
}

// One function that fails for one service, and what is left of the restart of agents that run.
struct RestartFailure
{
    const char* function;
    const char* service;
    Calls operations;
    std::size_t failuresReported;
};

void PrintTo(const RestartFailure& failure, std::ostream* out)
{
    *out << failure.function << " for " << failure.service;
}

class RestartWithAFailure : public RestartAgents, public testing::WithParamInterface<RestartFailure>
{
};

// The fixture's end counts the open handles.
TEST_P(RestartWithAFailure, DoesTheRestAndClosesEveryHandle)
{
    AddAgents(SERVICE_RUNNING);
    m_manager.Fail(GetParam().function, GetParam().service, ERROR_ACCESS_DENIED);
    m_user.Answer(IDYES);
    for (std::size_t box = 0; box < GetParam().failuresReported; ++box)
        m_user.Answer(IDOK);
    Restart();
    EXPECT_EQ(Operations(), GetParam().operations);
}

// SNMP does not stop while a service that depends on it runs.
const RestartFailure restartFailures[] = {
    {"OpenServiceA", "SNMP", {}, 0},
    {"OpenServiceA",
     "VtMgStor",
     {"ControlService VtMgHost 1", "ControlService SNMP 1", "StartServiceA VtMgHost"},
     1},
    {"QueryServiceStatus",
     "SNMP",
     {"ControlService VtMgStor 1", "ControlService VtMgHost 1", "StartServiceA VtMgHost",
      "StartServiceA VtMgStor"},
     0},
    {"QueryServiceStatus",
     "VtMgStor",
     {"ControlService VtMgHost 1", "ControlService SNMP 1", "StartServiceA VtMgHost"},
     1},
    {"QueryServiceConfigA", "SNMP", stopAll + startAll, 0},
    {"QueryServiceConfigA", "VtMgHost", stopAll + startAll, 0},
    {"EnumDependentServicesA", "SNMP", {"ControlService SNMP 1"}, 1},
    {"StartServiceA", "SNMP", stopAll + startAll, 1},
    {"StartServiceA", "VtMgHost", stopAll + startAll, 1},
    {"ControlService", "SNMP", stopAll + Calls{"StartServiceA VtMgHost", "StartServiceA VtMgStor"}, 1},
    {"ControlService", "VtMgStor", stopAll + Calls{"StartServiceA VtMgHost"}, 2},
};

INSTANTIATE_TEST_SUITE_P(EachCall, RestartWithAFailure, testing::ValuesIn(restartFailures));

} // namespace
