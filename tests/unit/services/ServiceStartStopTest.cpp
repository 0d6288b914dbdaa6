// Starting and stopping one service: what is left alone, what the user sees.
#include "sysaccess/ServiceStartStop.h"
#include "imports/ImportHook.h"
#include "resources/resource.h"
#include "ScriptedMachine.h"
#include "support/DialogDriver.h"

#include <set>

namespace {

using support::ScriptedService;
using support::ServiceState;

constexpr char starting[] = "\nPlease wait...\n\nStarting the Agent display Service.";
constexpr char stopping[] = "\nPlease wait...\n\nStopping the Agent display Service.";
constexpr char cannotStart[] = "Could not start the Agent display service.\n\nUse the Services applet in the "
                               "Control Panel to control the service.";
constexpr char cannotStop[] = "Could not stop the Agent display service.\n\nUse the Services applet in the "
                              "Control Panel to control the service.";

// The operations that a started or stopped service leads to.
const std::set<std::string> operations{"StartServiceA", "ControlService"};

class ServiceStartStop : public ScriptedMachine
{
  protected:
    bool Start() { return StartServiceWithProgress(nullptr, "Agent", m_pleaseWait); }
    bool Stop() { return StopServiceWithProgress(nullptr, "Agent", m_pleaseWait); }

    void Add(ScriptedService service)
    {
        if (service.displayName.empty())
            service.displayName = "Agent display";
        m_manager.Add("Agent", std::move(service));
    }

    // What the dialog says; empty when there is none.
    [[nodiscard]] std::string Message() const
    {
        return m_pleaseWait == nullptr
                   ? ""
                   : support::WindowText(GetDlgItem(m_pleaseWait->m_hWnd, IDC_PLEASE_WAIT_TEXT));
    }

    // The user saw nothing and was asked nothing.
    void ExpectNothingHappened(support::Location where = support::Location::current())
    {
        support::ExpectEqual(std::string(), Message(), "please-wait text", where);
        support::ExpectEqual(Calls(), m_log.CallsOf(operations), "operations", where);
        support::ExpectBoxes(m_user, {}, where);
    }

    void ExpectReported(const std::string& text, support::Location where = support::Location::current())
    {
        support::ExpectBoxes(m_user, {{nullptr, text, "Norvale Management Agents", MB_ICONHAND}}, where);
    }

    PleaseWaitSlot m_pleaseWait;
};

using StartOneService = ServiceStartStop;
using StopOneService = ServiceStartStop;

TEST_F(StartOneService, StartsAStoppedServiceAndSaysSo)
{
    Add({});
    EXPECT_TRUE(Start());
    EXPECT_EQ(Message(), starting);
    EXPECT_EQ(m_log.CallsOf(operations), Calls{"StartServiceA Agent"});
    EXPECT_EQ(m_manager.State("Agent"), DWORD{SERVICE_RUNNING});
}

TEST_F(StartOneService, WaitsUntilTheServiceRuns)
{
    Add({.afterStart = {ServiceState(SERVICE_START_PENDING, 1, 700), ServiceState(SERVICE_RUNNING)}});
    EXPECT_TRUE(Start());
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>{700});
}

TEST_F(StartOneService, SkipsAMissingService)
{
    EXPECT_TRUE(Start());
    ExpectNothingHappened();
}

TEST_F(StartOneService, SkipsEveryServiceWhenTheManagerCannotBeOpened)
{
    Add({});
    m_manager.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    EXPECT_TRUE(Start());
    ExpectNothingHappened();
}

TEST_F(StartOneService, SkipsAServiceThatMayNotBeControlled)
{
    Add({});
    m_manager.Fail("OpenServiceA", "Agent", ERROR_ACCESS_DENIED);
    EXPECT_TRUE(Start());
    ExpectNothingHappened();
}

TEST_F(StartOneService, LeavesAServiceAloneThatIsNotStopped)
{
    for (DWORD state = SERVICE_START_PENDING; state <= SERVICE_PAUSED; ++state) {
        Add({.states = {ServiceState(state)}});
        EXPECT_TRUE(Start()) << state;
    }
    ExpectNothingHappened();
}

TEST_F(StartOneService, LeavesADisabledServiceAlone)
{
    Add({.startType = SERVICE_DISABLED});
    EXPECT_TRUE(Start());
    ExpectNothingHappened();
}

TEST_F(StartOneService, FailsQuietlyWhenTheStateCannotBeRead)
{
    Add({});
    m_manager.Fail("QueryServiceStatus", "Agent", ERROR_INVALID_HANDLE);
    EXPECT_FALSE(Start());
    ExpectNothingHappened();
}

TEST_F(StartOneService, ReportsARefusedStart)
{
    Add({});
    m_manager.Fail("StartServiceA", "Agent", ERROR_SERVICE_LOGON_FAILED);
    m_user.Answer(IDOK);
    EXPECT_FALSE(Start());
    ExpectReported(cannotStart);
}

TEST_F(StartOneService, AcceptsAServiceStartedByAnother)
{
    Add({});
    m_manager.Fail("StartServiceA", "Agent", ERROR_SERVICE_ALREADY_RUNNING);
    EXPECT_TRUE(Start());
    support::ExpectBoxes(m_user, {});
}

TEST_F(StartOneService, ReportsAServiceThatStopsByItself)
{
    Add({.afterStart = {ServiceState(SERVICE_START_PENDING, 1, 100), ServiceState(SERVICE_STOPPED)}});
    m_user.Answer(IDOK);
    EXPECT_FALSE(Start());
    ExpectReported(cannotStart);
}

TEST_F(StartOneService, ReportsAServiceThatStaysPending)
{
    Add({.afterStart = {ServiceState(SERVICE_START_PENDING)}});
    m_user.Answer(IDOK);
    EXPECT_FALSE(Start());
    ExpectReported(cannotStart);
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>(10, 2500));
}

TEST_F(StartOneService, ReportsOverTheOwner)
{
    const HWND owner =
        CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    Add({});
    m_manager.Fail("StartServiceA", "Agent", ERROR_SERVICE_LOGON_FAILED);
    m_user.Answer(IDOK);
    EXPECT_FALSE(StartServiceWithProgress(owner, "Agent", m_pleaseWait));
    EXPECT_EQ(m_user.Shown().at(0).owner, owner);
    m_pleaseWait.reset();
    DestroyWindow(owner);
}

TEST_F(StartOneService, CallsTheSnmpServiceJustSnmp)
{
    Add({.displayName = "The SNMP Service of this machine"});
    m_manager.Fail("StartServiceA", "Agent", ERROR_SERVICE_LOGON_FAILED);
    m_user.Answer(IDOK);
    EXPECT_FALSE(Start());
    EXPECT_EQ(Message(), "\nPlease wait...\n\nStarting the SNMP Service.");
    ExpectReported(
        "Could not start the SNMP service.\n\nUse the Services applet in the Control Panel to control "
        "the service.");
}

TEST_F(StartOneService, ShowsDisplayNamesOfAnyLengthAndContent)
{
    for (const std::string& name : {std::string(256, 'x'), std::string(20000, 'x'), std::string("100 %s%n%d"),
                                    std::string("\x83\x5C\x83\x6E \x95\x5C")}) // code page 932
    {
        Add({.displayName = name});
        EXPECT_TRUE(Start());
        EXPECT_TRUE(Message() == "\nPlease wait...\n\nStarting the " + name + " Service.")
            << name.substr(0, 20);
    }
}

TEST_F(StartOneService, ReadsAConfigurationThatIsLargerThanUsual)
{
    Add({.startType = SERVICE_DISABLED, .dependencies = std::vector<std::string>(200, "Dependency")});
    EXPECT_TRUE(Start());
    ExpectNothingHappened();
}

TEST_F(StartOneService, NamesAnUnreadableServiceByItsKey)
{
    Add({});
    m_manager.Fail("QueryServiceConfigA", "Agent", ERROR_ACCESS_DENIED);
    EXPECT_TRUE(Start());
    EXPECT_EQ(Message(), "\nPlease wait...\n\nStarting the Agent Service.");
}

TEST_F(StopOneService, StopsARunningServiceAndSaysSo)
{
    Add({.states = {ServiceState(SERVICE_RUNNING)}});
    EXPECT_TRUE(Stop());
    EXPECT_EQ(Message(), stopping);
    EXPECT_EQ(m_log.CallsOf(operations), Calls{"ControlService Agent 1"});
    EXPECT_EQ(m_manager.State("Agent"), DWORD{SERVICE_STOPPED});
}

TEST_F(StopOneService, StopsAPausedService)
{
    Add({.states = {ServiceState(SERVICE_PAUSED)}});
    EXPECT_TRUE(Stop());
    EXPECT_EQ(m_manager.State("Agent"), DWORD{SERVICE_STOPPED});
}

TEST_F(StopOneService, StopsADisabledServiceToo)
{
    Add({.startType = SERVICE_DISABLED, .states = {ServiceState(SERVICE_RUNNING)}});
    EXPECT_TRUE(Stop());
    EXPECT_EQ(m_manager.State("Agent"), DWORD{SERVICE_STOPPED});
}

TEST_F(StopOneService, LeavesAServiceAloneThatIsStoppedOrPending)
{
    for (const DWORD state : States{SERVICE_STOPPED, SERVICE_START_PENDING, SERVICE_STOP_PENDING,
                                    SERVICE_CONTINUE_PENDING, SERVICE_PAUSE_PENDING})
    {
        Add({.states = {ServiceState(state)}});
        EXPECT_TRUE(Stop()) << state;
    }
    ExpectNothingHappened();
}

TEST_F(StopOneService, SkipsAMissingServiceOrManager)
{
    EXPECT_TRUE(Stop());
    Add({.states = {ServiceState(SERVICE_RUNNING)}});
    m_manager.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    EXPECT_TRUE(Stop());
    ExpectNothingHappened();
}

TEST_F(StopOneService, FailsQuietlyWhenTheStateCannotBeRead)
{
    Add({.states = {ServiceState(SERVICE_RUNNING)}});
    m_manager.Fail("QueryServiceStatus", "Agent", ERROR_INVALID_HANDLE);
    EXPECT_FALSE(Stop());
    ExpectNothingHappened();
}

TEST_F(StopOneService, WaitsUntilTheServiceHasStopped)
{
    Add({.states = {ServiceState(SERVICE_RUNNING)},
         .afterStop = {ServiceState(SERVICE_STOP_PENDING, 1, 800), ServiceState(SERVICE_STOPPED)}});
    EXPECT_TRUE(Stop());
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>{800});
}

TEST_F(StopOneService, ReportsAServiceThatDoesNotStop)
{
    Add({.states = {ServiceState(SERVICE_RUNNING)}, .afterStop = {ServiceState(SERVICE_STOP_PENDING)}});
    m_user.Answer(IDOK);
    EXPECT_FALSE(Stop());
    ExpectReported(cannotStop);
}

TEST_F(StopOneService, ReportsARefusedStop)
{
    Add({.states = {ServiceState(SERVICE_RUNNING)}});
    m_manager.Fail("ControlService", "Agent", ERROR_DEPENDENT_SERVICES_RUNNING);
    m_user.Answer(IDOK);
    EXPECT_FALSE(Stop());
    ExpectReported(cannotStop);
}

TEST_F(StopOneService, CallsTheSnmpServiceJustSnmp)
{
    Add({.displayName = "SNMP Service", .states = {ServiceState(SERVICE_RUNNING)}});
    EXPECT_TRUE(Stop());
    EXPECT_EQ(Message(), "\nPlease wait...\n\nStopping the SNMP Service.");
}

TEST_F(ServiceStartStop, ShowsOneDialogForAllServicesOfAProcedure)
{
    Add({.states = {ServiceState(SERVICE_RUNNING)}});
    EXPECT_TRUE(Stop());
    const HWND dialog = m_pleaseWait->m_hWnd;
    EXPECT_TRUE(Start());
    EXPECT_EQ(m_pleaseWait->m_hWnd, dialog);
    EXPECT_EQ(Message(), starting);
}

// What is painted in one wait round of `operation`, with an owner window.
template <typename Operation>
HWND RepaintedBy(Operation operation)
{
    HWND repainted = nullptr;
    const auto watch = support::HookImport<decltype(InvalidateRect)>(
        GetModuleHandleA(nullptr), "InvalidateRect",
        [&](auto original, HWND window, const RECT* area, BOOL erase) {
            repainted = window;
            return original(window, area, erase);
        });
    operation();
    return repainted;
}

TEST_F(ServiceStartStop, RepaintsOwnerOrDialogWhileItWaits)
{
    const HWND owner =
        CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    Add({.afterStart = {ServiceState(SERVICE_START_PENDING, 1, 1), ServiceState(SERVICE_RUNNING)},
         .afterStop = {ServiceState(SERVICE_STOP_PENDING, 1, 1), ServiceState(SERVICE_STOPPED)}});
    EXPECT_EQ(RepaintedBy([&] { StartServiceWithProgress(owner, "Agent", m_pleaseWait); }), owner);
    EXPECT_EQ(RepaintedBy([&] { StopServiceWithProgress(owner, "Agent", m_pleaseWait); }),
              m_pleaseWait->m_hWnd);
    m_pleaseWait.reset();
    DestroyWindow(owner);
}

TEST_F(ServiceStartStop, DoesItsWorkWhenTheDialogCannotBeShown)
{
    const auto refuse = support::HookImport<decltype(CreateDialogParamA)>(
        GetModuleHandleA(nullptr), "CreateDialogParamA",
        [](auto, HINSTANCE, LPCSTR, HWND, DLGPROC, LPARAM) { return HWND{}; });
    Add({});
    EXPECT_TRUE(Start());
    EXPECT_TRUE(Stop());
    EXPECT_EQ(m_log.CallsOf(operations), (Calls{"StartServiceA Agent", "ControlService Agent 1"}));
    EXPECT_EQ(m_pleaseWait, nullptr);
}

} // namespace
