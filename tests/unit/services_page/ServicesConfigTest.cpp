// What the service manager is asked to do when the agent services' settings are saved. A script stands in for
// it and writes down what it is asked for.
#include "imports/ImportHook.h"
#include "ServicesSettingsTest.h"
#include "support/RegistryCalls.h"
#include "support/ServiceScript.h"
#include "support/ThisProgram.h"
#include "sysaccess/core/RegistryKey.h"

namespace {

using support::thisProgram;

class ServicesSettingsConfig : public ServicesSettingsTest
{
  protected:
    ServicesSettingsConfig()
    {
        for (const AgentService& service : agentServices)
            m_services.Add(service.name, {});
    }

    // The calls whose text begins with `function`.
    [[nodiscard]] Names CallsOf(const std::string& function) const
    {
        Names calls;
        for (const std::string& call : m_log.Calls()) {
            if (call.starts_with(function))
                calls.push_back(call);
        }
        return calls;
    }

    support::CallLog m_log;
    support::ServiceScript m_services{thisProgram, &m_log};
};

TEST_F(ServicesSettingsConfig, ChangesStartTypesAndMainDependenciesOnly)
{
    m_machine.InstallSnmp();
    AddAgents({"VtMgHost", "VtMgStor"});
    LoadAndSave();
    EXPECT_EQ(
        CallsOf("ChangeServiceConfigA"),
        (Names{"ChangeServiceConfigA VtMgHost startType=2", "ChangeServiceConfigA VtMgServ startType=4",
               "ChangeServiceConfigA VtMgStor startType=2", "ChangeServiceConfigA VTNNicMgmt startType=4",
               "ChangeServiceConfigA VtMgHost dependencies=VtMgStor/SNMP/"}));
}

TEST_F(ServicesSettingsConfig, ClearsDependenciesWithAnEmptyList)
{
    AddAgents({});
    LoadAndSave();
    EXPECT_EQ(CallsOf("ChangeServiceConfigA").back(), "ChangeServiceConfigA VtMgHost dependencies=");
}

// All services as they are to be: the main one starts and depends on SNMP, the others are disabled.
class ServicesSettingsThatStay : public ServicesSettingsConfig
{
  protected:
    ServicesSettingsThatStay()
    {
        m_machine.InstallSnmp();
        AddAgents({"VtMgHost"});
        for (const AgentService& service : agentServices)
            m_services.Add(service.name, {.startType = SERVICE_DISABLED});
        m_services.Add("VtMgHost", {.startType = SERVICE_AUTO_START, .dependencies = {"SNMP"}});
    }

    [[nodiscard]] Names ChangesOfASave()
    {
        const EqualValuesStay stay;
        LoadAndSave();
        return CallsOf("ChangeServiceConfigA");
    }
};

TEST_F(ServicesSettingsThatStay, AreNotWrittenToTheManager)
{
    EXPECT_EQ(ChangesOfASave(), Names{});
}

TEST_F(ServicesSettingsThatStay, AreWrittenWithoutTheWishToLeaveThem)
{
    LoadAndSave();
    EXPECT_EQ(CallsOf("ChangeServiceConfigA").size(), 5U);
}

TEST_F(ServicesSettingsThatStay, AreWrittenWhereTheManagerHasOthers)
{
    m_services.Add("VtMgHost", {.startType = SERVICE_DEMAND_START, .dependencies = {"VtMgStor"}});
    m_services.Add("VtMgStor", {.startType = SERVICE_AUTO_START});
    EXPECT_EQ(ChangesOfASave(),
              (Names{"ChangeServiceConfigA VtMgHost startType=2", "ChangeServiceConfigA VtMgStor startType=4",
                     "ChangeServiceConfigA VtMgHost dependencies=SNMP/"}));
}

TEST_F(ServicesSettingsThatStay, AreWrittenWhereTheManagerDoesNotSayWhatItHas)
{
    m_services.Fail("QueryServiceConfigA", "VtMgHost", ERROR_ACCESS_DENIED);
    EXPECT_EQ(ChangesOfASave(), (Names{"ChangeServiceConfigA VtMgHost startType=2",
                                       "ChangeServiceConfigA VtMgHost dependencies=SNMP/"}));
}

TEST_F(ServicesSettingsConfig, EndsTheListOfDependenciesWithTwoZeros)
{
    AddAgents({"VtMgServ", "VtMgStor"});
    std::string block;
    auto keep = support::HookImport<decltype(ChangeServiceConfigA)>(
        thisProgram, "ChangeServiceConfigA",
        [&](auto original, SC_HANDLE service, DWORD type, DWORD startType, DWORD errorControl, LPCSTR path,
            LPCSTR group, LPDWORD tag, LPCSTR dependencies, LPCSTR account, LPCSTR password, LPCSTR name) {
            EXPECT_EQ(tag, nullptr);
            EXPECT_EQ(password, nullptr);
            if (dependencies != nullptr)
                block.assign(dependencies, 19);
            return original(service, type, startType, errorControl, path, group, tag, dependencies, account,
                            password, name);
        });
    LoadAndSave();
    EXPECT_EQ(block, std::string("VtMgServ\0VtMgStor\0", 19));
}

TEST_F(ServicesSettingsConfig, AsksForTheLeastManagerAccess)
{
    AddAgents({});
    LoadAndSave();
    EXPECT_EQ(CallsOf("OpenSCManagerA").size(), 1U);
    EXPECT_NE(CallsOf("OpenSCManagerA").front().find("0x20000000"), std::string::npos);
    EXPECT_EQ(CallsOf("OpenServiceA"),
              (Names{"OpenServiceA VtMgHost 0xf01ff", "OpenServiceA VtMgServ 0xf01ff",
                     "OpenServiceA VtMgStor 0xf01ff", "OpenServiceA VTNNicMgmt 0xf01ff",
                     "OpenServiceA VtMgHost 0xf01ff"}));
    EXPECT_EQ(m_services.OpenHandles(), 0);
}

TEST_F(ServicesSettingsConfig, WritesEachServiceToRegistryThenManager)
{
    AddAgents({"VtMgHost"});
    m_settings.Load();
    const support::RegistryCalls registry(thisProgram, &m_log);
    m_settings.Save(anyNumber);
    Names steps = m_log.Calls();
    std::erase_if(steps, [](const std::string& call) {
        return call.starts_with("RegOpenKeyA") || call.starts_with("RegCloseKey");
    });
    const std::string services = "HKLM\\SYSTEM\\CurrentControlSet\\Services\\";
    ASSERT_EQ(steps.size(), 27U);
    EXPECT_EQ(
        Names(steps.begin(), steps.begin() + 7),
        (Names{"OpenSCManagerA (null) 0x20000000", "OpenServiceA VtMgHost 0xf01ff",
               "RegSetValueExA " + services + "VtMgHost\\Parameters, SubServices",
               "RegSetValueExA " + services + "VtMgHost, Start", "ChangeServiceConfigA VtMgHost startType=2",
               "CloseServiceHandle VtMgHost", "OpenServiceA VtMgServ 0xf01ff"}));
    EXPECT_EQ(Names(steps.end() - 6, steps.end()),
              (Names{"RegOpenKeyExA " + services + "SNMP, access 0x20019 = 2",
                     "RegSetValueExA " + services + "VtMgHost, DependOnService",
                     "OpenServiceA VtMgHost 0xf01ff", "ChangeServiceConfigA VtMgHost dependencies=",
                     "CloseServiceHandle VtMgHost", "CloseServiceHandle (manager)"}));
    EXPECT_EQ(registry.OpenKeys(), Names{});
}

TEST_F(ServicesSettingsConfig, WritesTheRegistryWithoutAServiceManager)
{
    m_machine.InstallSnmp();
    AddAgents({"VtMgHost", "VtMgServ"});
    m_services.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    LoadAndSave();
    EXPECT_EQ(CallsOf("OpenServiceA"), Names{});
    ExpectSaved(m_machine, "VtMgHost", {"VTNVtMgHost"});
    ExpectDependencies({"VtMgServ", "SNMP"});
}

TEST_F(ServicesSettingsConfig, WritesTheRegistryOfAnUnopenedService)
{
    AddAgents({"VtMgHost", "VtMgServ"});
    m_services.Fail("OpenServiceA", "VtMgHost", ERROR_ACCESS_DENIED);
    LoadAndSave();
    ExpectSaved(m_machine, "VtMgHost", {"VTNVtMgHost"});
    ExpectDependencies({"VtMgServ"});
    EXPECT_EQ(CallsOf("ChangeServiceConfigA").size(), 3U);
}

TEST_F(ServicesSettingsConfig, GoesOnWhenTheManagerRefusesAChange)
{
    AddAgents({"VtMgHost", "VtMgServ"});
    for (const AgentService& service : agentServices)
        m_services.Fail("ChangeServiceConfigA", service.name, ERROR_ACCESS_DENIED);
    LoadAndSave();
    EXPECT_EQ(CallsOf("ChangeServiceConfigA").size(), 5U);
    ExpectSaved(m_machine, "VtMgServ", {"VTNVtMgServ"});
    ExpectDependencies({"VtMgServ"});
    EXPECT_EQ(m_services.OpenHandles(), 0);
}

} // namespace
