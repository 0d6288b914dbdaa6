// The same against services that really start, stop, hang and fail.
#include "RealServices.h"
#include "resources/resource.h"
#include "support/DialogDriver.h"
#include "support/FakeClock.h"
#include "support/ImportHook.h"
#include "support/MessageBoxScript.h"
#include "sysaccess/AgentRestart.h"

#include <gtest/gtest.h>

namespace {

constexpr char name[] = "VtnTestAgent";
constexpr char cannotStart[] = "Could not start the Test Agent service.\n\nUse the Services applet in the "
                               "Control Panel to control the service.";
constexpr char cannotStop[] = "Could not stop the Test Agent service.\n\nUse the Services applet in the "
                              "Control Panel to control the service.";

class RealServicesTest : public testing::Test
{
  protected:
    bool Start() { return StartServiceWithProgress(nullptr, name, m_pleaseWait); }
    bool Stop() { return StopServiceWithProgress(nullptr, name, m_pleaseWait); }

    void ExpectTold(const std::string& text, support::Location where = support::Location::current())
    {
        support::ExpectBoxes(m_user, {{nullptr, text, "Norvale Management Agents", MB_ICONHAND}}, where);
    }

    support::MessageBoxScript m_user{GetModuleHandleA(nullptr)};
    PleaseWaitSlot m_pleaseWait;
};

TEST_F(RealServicesTest, StartsAndStopsASlowServiceThatReportsItsProgress)
{
    const RealService agent(
        name, "Test Agent",
        {"StartDelay=1200", "StartSteps=3", "StopDelay=900", "StopSteps=2", "WaitHint=350"});
    EXPECT_TRUE(Start());
    EXPECT_EQ(agent.State(), DWORD{SERVICE_RUNNING});
    EXPECT_TRUE(IsServiceActive(name));
    EXPECT_TRUE(Stop());
    EXPECT_EQ(agent.State(), DWORD{SERVICE_STOPPED});
    EXPECT_FALSE(IsServiceActive(name));
}

TEST_F(RealServicesTest, StopsAPausedService)
{
    const RealService agent(name, "Test Agent", {});
    agent.Start();
    agent.Pause();
    EXPECT_TRUE(Stop());
    EXPECT_EQ(agent.State(), DWORD{SERVICE_STOPPED});
}

TEST_F(RealServicesTest, GivesUpOnAServiceThatNeverGetsReady)
{
    const RealService agent(name, "Test Agent", {"StartDelay=4294967295", "WaitHint=100"});
    const support::FakeClock clock(GetModuleHandleA(nullptr));
    m_user.Answer(IDOK);
    EXPECT_FALSE(Start());
    ExpectTold(cannotStart);
    EXPECT_EQ(agent.State(), DWORD{SERVICE_START_PENDING});
    EXPECT_EQ(clock.Sleeps().size(), 10U);
}

TEST_F(RealServicesTest, GivesUpOnAServiceThatNeverStops)
{
    const RealService agent(name, "Test Agent", {"StopDelay=4294967295", "WaitHint=100"});
    agent.Start();
    const support::FakeClock clock(GetModuleHandleA(nullptr));
    m_user.Answer(IDOK);
    EXPECT_FALSE(Stop());
    ExpectTold(cannotStop);
    EXPECT_EQ(agent.State(), DWORD{SERVICE_STOP_PENDING});
}

TEST_F(RealServicesTest, TellsOfAServiceThatFailsToStart)
{
    const RealService agent(name, "Test Agent", {"StartError=5", "StartDelay=100", "WaitHint=200"});
    m_user.Answer(IDOK);
    EXPECT_FALSE(Start());
    ExpectTold(cannotStart);
    EXPECT_EQ(agent.State(), DWORD{SERVICE_STOPPED});
}

TEST_F(RealServicesTest, TellsOfAServiceThatStopsByItself)
{
    const RealService agent(name, "Test Agent", {"StartDelay=200", "WaitHint=1500", "RunTime=1"});
    m_user.Answer(IDOK);
    EXPECT_FALSE(Start());
    ExpectTold(cannotStart);
    EXPECT_EQ(agent.State(), DWORD{SERVICE_STOPPED});
}

TEST_F(RealServicesTest, LeavesADisabledServiceAlone)
{
    const RealService agent(name, "Test Agent", {});
    agent.Disable();
    EXPECT_TRUE(Start());
    EXPECT_EQ(agent.State(), DWORD{SERVICE_STOPPED});
    EXPECT_EQ(m_pleaseWait, nullptr);
}

TEST_F(RealServicesTest, SkipsAServiceThatIsNotInstalled)
{
    EXPECT_TRUE(Start());
    EXPECT_TRUE(Stop());
    EXPECT_FALSE(IsServiceActive(name));
    std::vector<std::string> dependents{"Old"};
    EXPECT_TRUE(GetDependentServices(name, dependents));
    EXPECT_TRUE(dependents.empty());
}

TEST_F(RealServicesTest, TellsTheUserWhichServiceItIsWaitingFor)
{
    const RealService agent(name, "Test Agent", {});
    EXPECT_TRUE(Start());
    ASSERT_NE(m_pleaseWait, nullptr);
    EXPECT_EQ(support::WindowText(GetDlgItem(m_pleaseWait->m_hWnd, IDC_PLEASE_WAIT_TEXT)),
              "\nPlease wait...\n\nStarting the Test Agent Service.");
}

// Reports VtMgHost alone, which fits any buffer, as the service that depends on another: Wine's list of
// dependents is always empty. Windows would list those that name the other in their dependencies; here none
// does.
BOOL ReportHostAsDependent(LPENUM_SERVICE_STATUSA list, LPDWORD needed, LPDWORD count)
{
    static char host[] = "VtMgHost";
    *list = {host, host, {}};
    *needed = 0;
    *count = 1;
    return TRUE;
}

TEST_F(RealServicesTest, RestartsTheAgentsAsOtherProcesses)
{
    const RealService snmp("SNMP", "SNMP Service", {"StopDelay=100", "WaitHint=200"});
    const RealService host("VtMgHost", "Test Host", {"StartDelay=100", "WaitHint=200"});
    const auto dependents = support::HookImport<decltype(EnumDependentServicesA)>(
        GetModuleHandleA(nullptr), "EnumDependentServicesA",
        [](auto, SC_HANDLE, DWORD, LPENUM_SERVICE_STATUSA list, DWORD, LPDWORD needed, LPDWORD count) {
            return ReportHostAsDependent(list, needed, count);
        });
    snmp.Start();
    host.Start();
    const DWORD snmpBefore = snmp.ProcessId();
    const DWORD hostBefore = host.ProcessId();
    m_user.Answer(IDYES);
    RestartAgentServices(nullptr);
    EXPECT_EQ(snmp.State(), DWORD{SERVICE_RUNNING});
    EXPECT_EQ(host.State(), DWORD{SERVICE_RUNNING});
    EXPECT_NE(snmp.ProcessId(), snmpBefore);
    EXPECT_NE(host.ProcessId(), hostBefore);
    EXPECT_EQ(m_user.Shown().size(), 1U);
}

} // namespace
