// The scripted service manager: that it keeps to its script and to Windows' rules.
#include "support/ServiceScript.h"
#include "support/FakeClock.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <gtest/gtest.h>

namespace {

using support::ScriptedService;
using support::ServiceScript;
using support::ServiceState;

using Calls = std::vector<std::string>;

// The calls stand apart from the script, as the hook's header asks.
[[gnu::noinline]] SC_HANDLE Manager()
{
    return OpenSCManagerA(nullptr, "ServicesActive", GENERIC_EXECUTE);
}

[[gnu::noinline]] SC_HANDLE Open(const char* name, DWORD access = SERVICE_ALL_ACCESS)
{
    return OpenServiceA(Manager(), name, access);
}

[[gnu::noinline]] SERVICE_STATUS Query(SC_HANDLE service)
{
    SERVICE_STATUS status{};
    return QueryServiceStatus(service, &status) == FALSE ? SERVICE_STATUS{} : status;
}

// Each answers the error, 0 for success.
[[gnu::noinline]] DWORD Start(SC_HANDLE service)
{
    return StartServiceA(service, 0, nullptr) != FALSE ? ERROR_SUCCESS : GetLastError();
}

[[gnu::noinline]] DWORD Stop(SC_HANDLE service, SERVICE_STATUS* status = nullptr)
{
    SERVICE_STATUS unused{};
    return ControlService(service, SERVICE_CONTROL_STOP, status != nullptr ? status : &unused) != FALSE
               ? ERROR_SUCCESS
               : GetLastError();
}

[[gnu::noinline]] DWORD Close(SC_HANDLE handle)
{
    return CloseServiceHandle(handle) != FALSE ? ERROR_SUCCESS : GetLastError();
}

class ServiceScriptTest : public testing::Test
{
  protected:
    void AddRunning(const std::string& name)
    {
        m_script.Add(name, {.states = {ServiceState(SERVICE_RUNNING)}});
    }

    ServiceScript m_script{GetModuleHandleA(nullptr)};
};

TEST_F(ServiceScriptTest, AnswersTheStatesInOrder)
{
    m_script.Add("A",
                 {.states = {ServiceState(SERVICE_START_PENDING, 1, 3000), ServiceState(SERVICE_RUNNING)}});
    const SC_HANDLE service = Open("A");
    const SERVICE_STATUS first = Query(service);
    EXPECT_EQ(first.dwCurrentState, DWORD{SERVICE_START_PENDING});
    EXPECT_EQ(first.dwCheckPoint, 1U);
    EXPECT_EQ(first.dwWaitHint, 3000U);
    EXPECT_EQ(Query(service).dwCurrentState, DWORD{SERVICE_RUNNING});
    EXPECT_EQ(Query(service).dwCurrentState, DWORD{SERVICE_RUNNING});
}

TEST_F(ServiceScriptTest, StartsAStoppedServiceAlongItsList)
{
    m_script.Add("A", {.afterStart = {ServiceState(SERVICE_START_PENDING), ServiceState(SERVICE_RUNNING)}});
    const SC_HANDLE service = Open("A");
    EXPECT_EQ(Start(service), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(m_script.State("A"), DWORD{SERVICE_START_PENDING});
    EXPECT_EQ(Start(service), DWORD{ERROR_SERVICE_ALREADY_RUNNING});
}

TEST_F(ServiceScriptTest, StartsNoDisabledService)
{
    m_script.Add("A", {.startType = SERVICE_DISABLED});
    EXPECT_EQ(Start(Open("A")), DWORD{ERROR_SERVICE_DISABLED});
}

TEST_F(ServiceScriptTest, StopReportsTheStateWithoutUsingItUp)
{
    m_script.Add("A", {.states = {ServiceState(SERVICE_RUNNING)},
                       .afterStop = {ServiceState(SERVICE_STOP_PENDING, 4), ServiceState(SERVICE_STOPPED)}});
    const SC_HANDLE service = Open("A");
    SERVICE_STATUS status{};
    EXPECT_EQ(Stop(service, &status), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(status.dwCheckPoint, 4U);
    EXPECT_EQ(Stop(service), DWORD{ERROR_SERVICE_CANNOT_ACCEPT_CTRL});
    EXPECT_EQ(Query(service).dwCurrentState, DWORD{SERVICE_STOP_PENDING});
    EXPECT_EQ(Query(service).dwCurrentState, DWORD{SERVICE_STOPPED});
    EXPECT_EQ(Stop(service), DWORD{ERROR_SERVICE_NOT_ACTIVE});
}

TEST_F(ServiceScriptTest, StopsNoServiceWhoseDependentsRun)
{
    AddRunning("Dependent");
    m_script.Add("A", {.states = {ServiceState(SERVICE_RUNNING)}, .dependents = {"Dependent"}});
    EXPECT_EQ(Stop(Open("A")), DWORD{ERROR_DEPENDENT_SERVICES_RUNNING});
    EXPECT_EQ(Stop(Open("Dependent")), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(Stop(Open("A")), DWORD{ERROR_SUCCESS});
}

TEST_F(ServiceScriptTest, OpensWithTheAccessAskedFor)
{
    AddRunning("A");
    EXPECT_EQ(Open("B"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SERVICE_DOES_NOT_EXIST});
    const SC_HANDLE service = Open("A", GENERIC_READ);
    EXPECT_EQ(Query(service).dwCurrentState, DWORD{SERVICE_RUNNING});
    EXPECT_EQ(Stop(service), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(Stop(Manager()), DWORD{ERROR_INVALID_HANDLE});
}

TEST_F(ServiceScriptTest, CountsTheHandlesLeftOpen)
{
    AddRunning("A");
    const SC_HANDLE service = Open("A");
    EXPECT_EQ(m_script.OpenHandles(), 2);
    EXPECT_EQ(Close(service), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(m_script.OpenHandles(), 1);
    EXPECT_EQ(Close(service), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(Query(service).dwCurrentState, 0U);
}

TEST_F(ServiceScriptTest, FailsTheChosenCalls)
{
    AddRunning("A");
    AddRunning("B");
    const SC_HANDLE service = Open("A");
    m_script.Fail("QueryServiceStatus", "A", ERROR_INVALID_HANDLE, 2);
    EXPECT_NE(Query(service).dwCurrentState, 0U);
    EXPECT_EQ(Query(service).dwCurrentState, 0U);
    EXPECT_NE(Query(service).dwCurrentState, 0U);
    m_script.Fail("ControlService", "A", ERROR_SERVICE_REQUEST_TIMEOUT);
    EXPECT_EQ(Stop(service), DWORD{ERROR_SERVICE_REQUEST_TIMEOUT});
    EXPECT_EQ(Stop(service), DWORD{ERROR_SERVICE_REQUEST_TIMEOUT});
    EXPECT_EQ(Stop(Open("B")), DWORD{ERROR_SUCCESS});
    m_script.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    EXPECT_EQ(Manager(), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
}

[[gnu::noinline]] BOOL QueryConfig(SC_HANDLE service, BYTE* buffer, DWORD size, DWORD* needed)
{
    return QueryServiceConfigA(service, reinterpret_cast<LPQUERY_SERVICE_CONFIGA>(buffer), size, needed);
}

TEST_F(ServiceScriptTest, ReturnsTheConfigurationOrTheSizeItNeeds)
{
    m_script.Add("A", {.displayName = "Name A", .startType = SERVICE_AUTO_START, .dependencies = {"B", "C"}});
    const SC_HANDLE service = Open("A");
    alignas(QUERY_SERVICE_CONFIGA) std::array<BYTE, 1088> buffer{};
    DWORD needed = 0;
    EXPECT_FALSE(QueryConfig(service, nullptr, 0, &needed));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    ASSERT_TRUE(QueryConfig(service, buffer.data(), needed, &needed));
    EXPECT_TRUE(std::all_of(buffer.begin() + needed, buffer.end(), [](BYTE byte) { return byte == 0; }));
    const auto* config = reinterpret_cast<const QUERY_SERVICE_CONFIGA*>(buffer.data());
    EXPECT_STREQ(config->lpDisplayName, "Name A");
    EXPECT_EQ(config->dwStartType, DWORD{SERVICE_AUTO_START});
    EXPECT_EQ(std::memcmp(config->lpDependencies, "B\0C\0", 5), 0);
}

[[gnu::noinline]] BOOL EnumDependents(SC_HANDLE service, DWORD state, BYTE* buffer, DWORD size, DWORD* needed,
                                      DWORD* count)
{
    return EnumDependentServicesA(service, state, reinterpret_cast<LPENUM_SERVICE_STATUSA>(buffer), size,
                                  needed, count);
}

TEST_F(ServiceScriptTest, ReturnsTheDependentsOrTheSizeTheyNeed)
{
    AddRunning("B");
    m_script.Add("C", {.displayName = "Name C"});
    m_script.Add("A", {.dependents = {"C", "B"}});
    const SC_HANDLE service = Open("A");
    alignas(ENUM_SERVICE_STATUSA) std::array<BYTE, 512> buffer{};
    DWORD needed = 0;
    DWORD count = 0;
    EXPECT_FALSE(EnumDependents(service, SERVICE_STATE_ALL, nullptr, 0, &needed, &count));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MORE_DATA});
    ASSERT_TRUE(EnumDependents(service, SERVICE_STATE_ALL, buffer.data(), needed, &needed, &count));
    ASSERT_EQ(count, 2U);
    const auto* list = reinterpret_cast<const ENUM_SERVICE_STATUSA*>(buffer.data());
    EXPECT_STREQ(list[0].lpServiceName, "C");
    EXPECT_STREQ(list[0].lpDisplayName, "Name C");
    EXPECT_STREQ(list[1].lpServiceName, "B");
    EXPECT_EQ(list[1].ServiceStatus.dwCurrentState, DWORD{SERVICE_RUNNING});
    ASSERT_TRUE(EnumDependents(service, SERVICE_ACTIVE, buffer.data(), 512, &needed, &count));
    EXPECT_EQ(count, 1U);
}

[[gnu::noinline]] BOOL Disable(SC_HANDLE service)
{
    return ChangeServiceConfigA(service, SERVICE_NO_CHANGE, SERVICE_DISABLED, SERVICE_NO_CHANGE, nullptr,
                                nullptr, nullptr, "B\0C\0", nullptr, nullptr, nullptr);
}

TEST_F(ServiceScriptTest, ChangesTheConfiguration)
{
    m_script.Add("A", {.displayName = "Name A"});
    EXPECT_TRUE(Disable(Open("A")));
    EXPECT_EQ(m_script.Service("A").startType, DWORD{SERVICE_DISABLED});
    EXPECT_EQ(m_script.Service("A").dependencies, (Calls{"B", "C"}));
    EXPECT_EQ(m_script.Service("A").displayName, "Name A");
    EXPECT_EQ(m_script.Calls().back(), "ChangeServiceConfigA A startType=4 dependencies=B/C/");
}

[[gnu::noinline]] void Pause(DWORD milliseconds)
{
    Sleep(milliseconds);
}

TEST(ServiceScriptLog, ListsAllCallsInTheirOrderBesideTheSleeps)
{
    support::CallLog log;
    ServiceScript script(GetModuleHandleA(nullptr), &log);
    const support::FakeClock clock(GetModuleHandleA(nullptr), 0, &log);
    script.Add("A", {});
    const SC_HANDLE service = Open("A", SERVICE_START | SERVICE_QUERY_STATUS);
    Start(service);
    Pause(1000);
    Query(service);
    Close(service);
    EXPECT_EQ(log.Calls(),
              (Calls{"OpenSCManagerA ServicesActive 0x20000000", "OpenServiceA A 0x14", "StartServiceA A",
                     "Sleep 1000", "QueryServiceStatus A", "CloseServiceHandle A"}));
}

} // namespace
