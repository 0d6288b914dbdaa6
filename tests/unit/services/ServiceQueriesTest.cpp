// Questions to the service manager: is a service active, and which services depend on it.
#include "sysaccess/core/ServiceQueries.h"
#include "imports/ImportHook.h"
#include "support/ServiceScript.h"

#include <gtest/gtest.h>
#include <optional>

namespace {

using support::ServiceState;

using Names = std::vector<std::string>;

class ServiceQueries : public testing::Test
{
  protected:
    void TearDown() override { EXPECT_EQ(m_manager.OpenHandles(), 0); }

    bool IsActiveIn(DWORD state)
    {
        m_manager.Add("Agent", {.states = {ServiceState(state)}});
        return IsServiceActive("Agent");
    }

    void AddWithDependents(Names dependents) { m_manager.Add("SNMP", {.dependents = std::move(dependents)}); }

    support::ServiceScript m_manager{GetModuleHandleA(nullptr)};
};

using IsServiceActiveTest = ServiceQueries;
using GetDependentServicesTest = ServiceQueries;

TEST_F(IsServiceActiveTest, HoldsForEveryStateButStoppedAndStopping)
{
    EXPECT_FALSE(IsActiveIn(SERVICE_STOPPED));
    EXPECT_TRUE(IsActiveIn(SERVICE_START_PENDING));
    EXPECT_FALSE(IsActiveIn(SERVICE_STOP_PENDING));
    EXPECT_TRUE(IsActiveIn(SERVICE_RUNNING));
    EXPECT_TRUE(IsActiveIn(SERVICE_CONTINUE_PENDING));
    EXPECT_TRUE(IsActiveIn(SERVICE_PAUSE_PENDING));
    EXPECT_TRUE(IsActiveIn(SERVICE_PAUSED));
}

TEST_F(IsServiceActiveTest, HoldsForNoStateThatWindowsDoesNotKnow)
{
    EXPECT_FALSE(IsActiveIn(0));
    EXPECT_FALSE(IsActiveIn(8));
}

TEST_F(IsServiceActiveTest, DoesNotHoldForAMissingService)
{
    EXPECT_FALSE(IsServiceActive("Agent"));
}

TEST_F(IsServiceActiveTest, DoesNotHoldWhenTheStateCannotBeRead)
{
    m_manager.Add("Agent", {.states = {ServiceState(SERVICE_RUNNING)}});
    m_manager.Fail("QueryServiceStatus", "Agent", ERROR_INVALID_HANDLE);
    EXPECT_FALSE(IsServiceActive("Agent"));
}

TEST_F(IsServiceActiveTest, HoldsWhenTheManagerCannotBeOpened)
{
    m_manager.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    EXPECT_TRUE(IsServiceActive("Agent"));
}

TEST_F(IsServiceActiveTest, AsksForNoMoreRightsThanItNeeds)
{
    m_manager.Add("Agent", {});
    EXPECT_FALSE(IsServiceActive("Agent"));
    EXPECT_EQ(m_manager.Calls(), (Names{"OpenSCManagerA ServicesActive 0x80000000", "OpenServiceA Agent 0x4",
                                        "QueryServiceStatus Agent", "CloseServiceHandle Agent",
                                        "CloseServiceHandle (manager)"}));
}

TEST_F(GetDependentServicesTest, ListsThemInTheManagersOrderWhateverTheirState)
{
    AddWithDependents({"Running", "Absent", "Another"});
    m_manager.Add("Running", {.states = {ServiceState(SERVICE_RUNNING)}});
    Names names;
    EXPECT_TRUE(GetDependentServices("SNMP", names));
    EXPECT_EQ(names, (Names{"Running", "Absent", "Another"}));
}

TEST_F(GetDependentServicesTest, ForgetsWhatTheListHeld)
{
    AddWithDependents({});
    Names names{"Old"};
    EXPECT_TRUE(GetDependentServices("SNMP", names));
    EXPECT_EQ(names, Names());
}

TEST_F(GetDependentServicesTest, AsksAgainWithMoreRoomForALongList)
{
    Names dependents;
    for (int number = 0; number < 40; ++number)
        dependents.push_back("Dependent agent with the number " + std::to_string(number));
    AddWithDependents(dependents);
    Names names;
    EXPECT_TRUE(GetDependentServices("SNMP", names));
    EXPECT_EQ(names, dependents);
    EXPECT_EQ(m_manager.Log().CallsOf({"EnumDependentServicesA"}).size(), 2U);
}

TEST_F(GetDependentServicesTest, LeavesRoomForServicesThatAreInstalledInBetween)
{
    AddWithDependents(Names(40, "A dependent agent with a long name"));
    std::vector<DWORD> sizes;
    std::vector<DWORD> needs;
    const auto watch = support::HookImport<decltype(EnumDependentServicesA)>(
        GetModuleHandleA(nullptr), "EnumDependentServicesA",
        [&](auto original, SC_HANDLE service, DWORD states, LPENUM_SERVICE_STATUSA list, DWORD size,
            LPDWORD needed, LPDWORD count) {
            const BOOL isListed = original(service, states, list, size, needed, count);
            sizes.push_back(size);
            needs.push_back(*needed);
            return isListed;
        });
    Names names;
    EXPECT_TRUE(GetDependentServices("SNMP", names));
    ASSERT_EQ(sizes.size(), 2U);
    EXPECT_EQ(sizes, (std::vector<DWORD>{1024, needs[0] + 512}));
}

TEST_F(GetDependentServicesTest, HasNoneForAMissingService)
{
    Names names{"Old"};
    EXPECT_TRUE(GetDependentServices("SNMP", names));
    EXPECT_EQ(names, Names());
}

TEST_F(GetDependentServicesTest, HasNoneWhenTheManagerCannotBeOpened)
{
    AddWithDependents({"Agent"});
    m_manager.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    Names names{"Old"};
    EXPECT_TRUE(GetDependentServices("SNMP", names));
    EXPECT_EQ(names, Names());
}

TEST_F(GetDependentServicesTest, SaysSoWhenTheListIsRefused)
{
    AddWithDependents({"Agent"});
    m_manager.Fail("EnumDependentServicesA", "SNMP", ERROR_ACCESS_DENIED);
    Names names{"Old"};
    EXPECT_FALSE(GetDependentServices("SNMP", names));
    EXPECT_EQ(names, Names());
    EXPECT_EQ(m_manager.Log().CallsOf({"EnumDependentServicesA"}).size(), 1U);
}

TEST_F(GetDependentServicesTest, SaysSoWhenTheSecondTryIsRefusedToo)
{
    AddWithDependents({"Agent"});
    m_manager.Fail("EnumDependentServicesA", "SNMP", ERROR_MORE_DATA);
    Names names;
    EXPECT_FALSE(GetDependentServices("SNMP", names));
    EXPECT_EQ(names, Names());
    EXPECT_EQ(m_manager.Log().CallsOf({"EnumDependentServicesA"}).size(), 2U);
}

TEST_F(GetDependentServicesTest, ReadsTheConfigurationBeforeTheList)
{
    AddWithDependents({"Agent"});
    DWORD room = 0;
    const auto watch = support::HookImport<decltype(QueryServiceConfigA)>(
        GetModuleHandleA(nullptr), "QueryServiceConfigA",
        [&](auto original, SC_HANDLE service, LPQUERY_SERVICE_CONFIGA config, DWORD size, LPDWORD needed) {
            room = size;
            return original(service, config, size, needed);
        });
    Names names;
    EXPECT_TRUE(GetDependentServices("SNMP", names));
    EXPECT_EQ(m_manager.Calls(),
              (Names{"OpenSCManagerA ServicesActive 0x20000000", "OpenServiceA SNMP 0xf01ff",
                     "CloseServiceHandle (manager)", "QueryServiceConfigA SNMP",
                     "EnumDependentServicesA SNMP states=3 size=1024", "CloseServiceHandle SNMP"}));
    EXPECT_EQ(room, 1088U);
}

TEST_F(GetDependentServicesTest, NeedsNothingOfTheConfiguration)
{
    m_manager.Add("SNMP", {.displayName = std::string(2000, 'n'), .dependents = {"Agent"}});
    Names names;
    EXPECT_TRUE(GetDependentServices("SNMP", names));
    EXPECT_EQ(names, Names{"Agent"});
    m_manager.Fail("QueryServiceConfigA", "SNMP", ERROR_ACCESS_DENIED);
    EXPECT_TRUE(GetDependentServices("SNMP", names));
    EXPECT_EQ(names, Names{"Agent"});
    EXPECT_EQ(m_manager.Log().CallsOf({"QueryServiceConfigA"}).size(), 2U);
}

TEST_F(GetDependentServicesTest, OpensTheServiceForEveryUse)
{
    AddWithDependents({});
    Names names;
    EXPECT_TRUE(GetDependentServices("SNMP", names));
    EXPECT_EQ(m_manager.Log().CallsOf({"OpenSCManagerA", "OpenServiceA"}),
              (Names{"OpenSCManagerA ServicesActive 0x20000000", "OpenServiceA SNMP 0xf01ff"}));
}

using ReadServiceConfigTest = ServiceQueries;

std::optional<ServiceConfig> ConfigOf(const char* service)
{
    return ReadServiceConfig(OpenServiceForControl(service).Get());
}

TEST_F(ReadServiceConfigTest, HasStartTypeNameAndDependencies)
{
    m_manager.Add(
        "Agent",
        {.displayName = "An agent", .startType = SERVICE_DISABLED, .dependencies = {"SNMP", "VtMgServ"}});
    const std::optional<ServiceConfig> config = ConfigOf("Agent");
    ASSERT_TRUE(config.has_value());
    EXPECT_EQ(config->startType, DWORD{SERVICE_DISABLED});
    EXPECT_EQ(config->displayName, "An agent");
    EXPECT_EQ(config->dependencies, (Names{"SNMP", "VtMgServ"}));
    EXPECT_EQ(m_manager.Log().CallsOf({"QueryServiceConfigA"}).size(), 1U);
}

TEST_F(ReadServiceConfigTest, AsksAgainWithRoomForALongList)
{
    const Names dependencies(40, "A service with a long name, on which it depends");
    m_manager.Add("Agent", {.dependencies = dependencies});
    const std::optional<ServiceConfig> config = ConfigOf("Agent");
    ASSERT_TRUE(config.has_value());
    EXPECT_EQ(config->dependencies, dependencies);
    EXPECT_EQ(m_manager.Log().CallsOf({"QueryServiceConfigA"}).size(), 2U);
}

TEST_F(ReadServiceConfigTest, IsNothingWhenTheManagerRefuses)
{
    m_manager.Add("Agent", {});
    m_manager.Fail("QueryServiceConfigA", "Agent", ERROR_ACCESS_DENIED);
    EXPECT_FALSE(ConfigOf("Agent").has_value());
    EXPECT_EQ(m_manager.Log().CallsOf({"QueryServiceConfigA"}).size(), 1U);
}

} // namespace
