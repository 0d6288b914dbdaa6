// The service program under the real service manager: as slow, as stuck and as broken as its settings say.
#include "StandIn.h"
#include "support/UiThread.h"

#include <gtest/gtest.h>
#include <memory>
#include <type_traits>

namespace {

constexpr DWORD limit = 20'000; // milliseconds

// Each test has a service of its own, so that what one leaves behind in a bad moment does not fail another.
std::string ServiceName()
{
    return std::string("VtnDemoTest") + testing::UnitTest::GetInstance()->current_test_info()->name();
}

// Runs the service program by hand; its exit code.
DWORD RunProgram(const std::string& arguments)
{
    std::string commandLine = '"' + BuiltFile("AgentService.exe").string() + "\" " + arguments;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process))
        throw std::runtime_error("AgentService.exe does not start");
    DWORD exitCode = 0;
    WaitForSingleObject(process.hProcess, limit);
    GetExitCodeProcess(process.hProcess, &exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return exitCode;
}

struct ServiceCloser
{
    void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};
using ServiceHandle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, ServiceCloser>;

class AgentService : public testing::Test
{
  protected:
    ~AgentService() override
    {
        if (m_service)
            EndProcess();
        m_service.reset();
        EXPECT_EQ(RunProgram("--remove " + ServiceName()), 0u);
    }

    void Install(const std::string& settings)
    {
        ASSERT_EQ(
            RunProgram("--install " + ServiceName() + " \"Display of " + ServiceName() + "\" " + settings),
            0u);
        const ServiceHandle manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT));
        m_service.reset(OpenServiceA(manager.get(), ServiceName().c_str(), SERVICE_ALL_ACCESS));
        ASSERT_NE(m_service, nullptr);
    }
    SERVICE_STATUS Status() const
    {
        SERVICE_STATUS status{};
        EXPECT_TRUE(QueryServiceStatus(m_service.get(), &status));
        return status;
    }
    bool Reaches(DWORD state) const
    {
        return support::WaitUntil([this, state] { return Status().dwCurrentState == state; });
    }
    DWORD Start() const { return StartServiceA(m_service.get(), 0, nullptr) ? 0 : GetLastError(); }
    SERVICE_STATUS Control(DWORD control) const
    {
        SERVICE_STATUS status{};
        EXPECT_TRUE(ControlService(m_service.get(), control, &status)) << GetLastError();
        return status;
    }

    ServiceHandle m_service;

  private:
    // A service that hangs would stay, and with it the entry that is to be removed.
    void EndProcess() const
    {
        SERVICE_STATUS_PROCESS status{};
        DWORD needed = 0;
        EXPECT_TRUE(QueryServiceStatusEx(m_service.get(), SC_STATUS_PROCESS_INFO,
                                         reinterpret_cast<BYTE*>(&status), sizeof status, &needed));
        if (status.dwCurrentState == SERVICE_STOPPED)
            return;
        const HANDLE process = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, status.dwProcessId);
        TerminateProcess(process, 0);
        EXPECT_EQ(WaitForSingleObject(process, limit), WAIT_OBJECT_0);
        CloseHandle(process);
    }
};

TEST_F(AgentService, StartsStopsAndPausesOnRequest)
{
    Install("");
    ASSERT_EQ(Start(), 0u);
    ASSERT_TRUE(Reaches(SERVICE_RUNNING));

    Control(SERVICE_CONTROL_PAUSE);
    EXPECT_EQ(Status().dwCurrentState, static_cast<DWORD>(SERVICE_PAUSED));
    Control(SERVICE_CONTROL_CONTINUE);
    EXPECT_EQ(Status().dwCurrentState, static_cast<DWORD>(SERVICE_RUNNING));
    Control(SERVICE_CONTROL_STOP);
    EXPECT_TRUE(Reaches(SERVICE_STOPPED));
}

TEST_F(AgentService, AdvancesItsCheckPointWhileItStarts)
{
    Install("StartDelay=1200 StartSteps=2 WaitHint=700");
    ASSERT_EQ(Start(), 0u);

    EXPECT_TRUE(support::WaitUntil([this] { return Status().dwCheckPoint == 1; }));
    EXPECT_EQ(Status().dwCurrentState, static_cast<DWORD>(SERVICE_START_PENDING));
    EXPECT_EQ(Status().dwWaitHint, 700u);
    EXPECT_TRUE(support::WaitUntil([this] { return Status().dwCheckPoint == 3; }));
    EXPECT_TRUE(Reaches(SERVICE_RUNNING));
    EXPECT_EQ(Status().dwCheckPoint, 0u);
    Control(SERVICE_CONTROL_STOP);
    EXPECT_TRUE(Reaches(SERVICE_STOPPED));
}

TEST_F(AgentService, HasBegunToStopWhenTheStopIsAnswered)
{
    Install("StopDelay=800 WaitHint=900");
    ASSERT_EQ(Start(), 0u);
    ASSERT_TRUE(Reaches(SERVICE_RUNNING));

    const auto status = Control(SERVICE_CONTROL_STOP);

    EXPECT_EQ(status.dwCurrentState, static_cast<DWORD>(SERVICE_STOP_PENDING));
    EXPECT_EQ(status.dwWaitHint, 900u);
    EXPECT_TRUE(Reaches(SERVICE_STOPPED));
}

TEST_F(AgentService, FailsItsStartWithTheErrorThatIsSet)
{
    Install("StartDelay=100 StartError=1067");
    ASSERT_EQ(Start(), 0u);

    EXPECT_TRUE(support::WaitUntil([this] { return Status().dwWin32ExitCode == 1067; }));
    EXPECT_EQ(Status().dwCurrentState, static_cast<DWORD>(SERVICE_STOPPED));
}

TEST_F(AgentService, StopsByItselfAfterItsRunTime)
{
    Install("RunTime=600");
    ASSERT_EQ(Start(), 0u);

    EXPECT_TRUE(Reaches(SERVICE_RUNNING));
    EXPECT_TRUE(Reaches(SERVICE_STOPPED));
}

TEST_F(AgentService, NeverFinishesToStopWithAnEndlessDelay)
{
    Install("StopDelay=4294967295");
    ASSERT_EQ(Start(), 0u);
    ASSERT_TRUE(Reaches(SERVICE_RUNNING));

    Control(SERVICE_CONTROL_STOP);

    EXPECT_FALSE(support::WaitUntil([this] { return Status().dwCurrentState != SERVICE_STOP_PENDING; },
                                    std::chrono::milliseconds(1500)));
}

TEST_F(AgentService, RefusesSettingsThatItDoesNotKnow)
{
    EXPECT_EQ(RunProgram("--install " + ServiceName() + " Name Delay=1"), 1u);
}

} // namespace
