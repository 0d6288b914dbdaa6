// Loading the agent services' settings, and saving them to the registry, Wine's own.
#include "ServicesSettingsTest.h"

#include "imports/ImportHook.h"
#include "RefuseToOpen.h"
#include "support/ServiceScript.h"
#include "support/ThisProgram.h"
#include "sysaccess/core/ConfigurationError.h"

namespace {

using support::thisProgram;

// --- loading

using ServicesSettingsLoad = ServicesSettingsTest;

TEST_F(ServicesSettingsLoad, ReadsEveryServiceInTheOrderOfTheTable)
{
    EXPECT_EQ(LoadedServices(), (Names{"VtMgHost", "VtMgServ", "VtMgStor", "VTNNicMgmt"}));
}

TEST_F(ServicesSettingsLoad, LeavesOutAServiceThatIsNotInstalled)
{
    m_machine.Service("VtMgServ").Delete();
    EXPECT_EQ(LoadedServices(), (Names{"VtMgHost", "VtMgStor", "VTNNicMgmt"}));
}

TEST_F(ServicesSettingsLoad, LeavesOutAServiceThatMayNotBeRead)
{
    auto refuse = RefuseToOpen(m_machine.Service("VtMgHost").Path());
    EXPECT_EQ(LoadedServices(), (Names{"VtMgServ", "VtMgStor", "VTNNicMgmt"}));
}

TEST_F(ServicesSettingsLoad, LeavesOutAServiceWithoutSubkeys)
{
    m_machine.Service("VtMgStor").Clear();
    EXPECT_EQ(LoadedServices(), (Names{"VtMgHost", "VtMgServ", "VTNNicMgmt"}));
}

TEST_F(ServicesSettingsLoad, LeavesOutEveryServiceOfAMachineWithoutAgents)
{
    for (const AgentService& service : agentServices)
        m_machine.Service(service.name).Delete();
    EXPECT_EQ(LoadedServices(), Names{});
}

TEST_F(ServicesSettingsLoad, StartsAnewWhenItIsRepeated)
{
    m_settings.Load();
    EXPECT_EQ(LoadedServices().size(), 4U);
}

TEST_F(ServicesSettingsLoad, PairsTheSubAgentsOfTheNetworkAdaptersAlone)
{
    for (const AgentService& service : agentServices) {
        m_machine.AddAgent(service.name, "VTNMNIC");
        m_machine.AddAgent(service.name, "VTNNICS");
    }
    m_settings.Load();
    ASSERT_EQ(m_settings.groups.size(), 4U);
    for (const AgentGroup& group : m_settings.groups) {
        for (const AgentEntry& entry : group.Entries())
            EXPECT_EQ(entry.partner.has_value(), entry.listable && &group == &m_settings.groups[3]);
    }
}

// --- saving to the registry

class ServicesSettingsSave : public ServicesSettingsTest
{
  protected:
    support::ServiceScript m_services{thisProgram};
};

TEST_F(ServicesSettingsSave, StartsServicesWithActiveSubAgentsOnly)
{
    AddAgents({"VtMgHost", "VtMgStor"});
    LoadAndSave();
    ExpectSaved(m_machine, "VtMgHost", {"VTNVtMgHost"});
    ExpectSaved(m_machine, "VtMgServ", {});
    ExpectSaved(m_machine, "VtMgStor", {"VTNVtMgStor"});
    ExpectSaved(m_machine, "VTNNicMgmt", {});
}

TEST_F(ServicesSettingsSave, MakesTheMainServiceDependOnStartedOnes)
{
    m_machine.InstallSnmp();
    AddAgents({"VtMgHost", "VtMgStor"});
    LoadAndSave();
    ExpectDependencies({"VtMgStor", "SNMP"});
}

TEST_F(ServicesSettingsSave, KeepsTheOrderOfTheServicesInTheDependencies)
{
    m_machine.InstallSnmp();
    AddAgents({"VtMgHost", "VtMgServ", "VtMgStor", "VTNNicMgmt"});
    LoadAndSave();
    ExpectDependencies({"VtMgServ", "VtMgStor", "VTNNicMgmt", "SNMP"});
}

TEST_F(ServicesSettingsSave, OmitsSnmpWhenItIsNotInstalled)
{
    AddAgents({"VtMgHost", "VTNNicMgmt"});
    LoadAndSave();
    ExpectDependencies({"VTNNicMgmt"});
}

TEST_F(ServicesSettingsSave, OmitsSnmpWhenItsKeyDoesNotOpen)
{
    m_machine.InstallSnmp();
    AddAgents({"VtMgHost", "VTNNicMgmt"});
    auto refuse = support::HookImport<decltype(RegOpenKeyExA)>(
        thisProgram, "RegOpenKeyExA",
        [](auto, HKEY, LPCSTR, DWORD, REGSAM, PHKEY) -> LSTATUS { return ERROR_ACCESS_DENIED; });
    LoadAndSave();
    ExpectDependencies({"VTNNicMgmt"});
}

TEST_F(ServicesSettingsSave, EmptiesTheDependenciesWhenNothingIsLeft)
{
    AddAgents({"VtMgHost"});
    m_machine.Service("VtMgHost").SetMultiString("DependOnService", {"VtMgServ"});
    LoadAndSave();
    ExpectDependencies({});
}

TEST_F(ServicesSettingsSave, KeepsADisabledMainServicesDependencies)
{
    m_machine.InstallSnmp();
    AddAgents({"VtMgServ"});
    LoadAndSave();
    ExpectSaved(m_machine, "VtMgHost", {});
    ExpectDependencies({"VtMgServ", "SNMP"});
}

TEST_F(ServicesSettingsSave, NeverTakesTheFirstServiceReadForADependency)
{
    AddAgents({"VtMgServ", "VtMgStor"});
    m_machine.Parameters("VtMgHost").Delete();
    LoadAndSave();
    ExpectDependencies({"VtMgStor"});
}

TEST_F(ServicesSettingsSave, DropsANameWithoutSubkeyFromTheList)
{
    m_machine.AddAgent("VtMgServ", "VTNA");
    m_machine.SetActive("VtMgServ", {"VTNGONE", "vtna"});
    LoadAndSave();
    ExpectSaved(m_machine, "VtMgServ", {"VTNA"});
}

TEST_F(ServicesSettingsSave, KeepsThoseOf5000NamesWithASubkey)
{
    m_machine.AddAgent("VtMgServ", "VTNA");
    Names names(4999, "VTNGONE");
    names.emplace_back("VTNA");
    m_machine.SetActive("VtMgServ", names);
    LoadAndSave();
    ExpectSaved(m_machine, "VtMgServ", {"VTNA"});
}

TEST_F(ServicesSettingsSave, WritesANameOfFullLength)
{
    const std::string longest(255, 'x');
    m_machine.Service("VtMgServ").CreateSubkey(longest);
    m_machine.SetActive("VtMgServ", {longest});
    LoadAndSave();
    ExpectSaved(m_machine, "VtMgServ", {longest});
}

TEST_F(ServicesSettingsSave, WritesBothOfAPair)
{
    m_machine.AddAgent("VTNNicMgmt", "VTNMNIC");
    m_machine.AddAgent("VTNNicMgmt", "VTNNICS");
    m_machine.SetActive("VTNNicMgmt", {"VTNMNIC"});
    LoadAndSave();
    ExpectSaved(m_machine, "VTNNicMgmt", {"VTNMNIC", "VTNNICS"});
}

TEST_F(ServicesSettingsSave, LimitsTheSubAgentsPerService)
{
    for (const char* service : {"VtMgHost", "VtMgServ"}) {
        m_machine.AddAgent(service, "VTNA");
        m_machine.AddAgent(service, "VTNB");
        m_machine.SetActive(service, {"VTNA", "VTNB"});
    }
    LoadAndSave(1);
    ExpectSaved(m_machine, "VtMgHost", {"VTNA"});
    ExpectSaved(m_machine, "VtMgServ", {"VTNA"});
    LoadAndSave(0);
    ExpectSaved(m_machine, "VtMgHost", {});
    ExpectDependencies({});
}

TEST_F(ServicesSettingsSave, GivesTheSameResultWhenRepeated)
{
    m_machine.InstallSnmp();
    AddAgents({"VtMgHost", "VtMgServ"});
    LoadAndSave();
    m_settings.Save(anyNumber);
    ExpectSaved(m_machine, "VtMgHost", {"VTNVtMgHost"});
    ExpectSaved(m_machine, "VtMgServ", {"VTNVtMgServ"});
    ExpectDependencies({"VtMgServ", "SNMP"});
}

TEST_F(ServicesSettingsSave, LeavesTheExtensionAgentsOfSnmpAlone)
{
    m_machine.InstallSnmp();
    const support::TestKey extensions(ServiceKey("SNMP") + "\\Parameters\\ExtensionAgents");
    extensions.SetString("1", "SOFTWARE\\Agent");
    AddAgents({"VtMgHost"});
    LoadAndSave();
    support::ExpectString(extensions, "1", "SOFTWARE\\Agent");
    EXPECT_EQ(extensions.ValueNames(), Names{"1"});
}

TEST_F(ServicesSettingsSave, RefusesWithoutTheMainService)
{
    AddAgents({"VtMgServ"});
    m_machine.Service("VtMgHost").Delete();
    m_settings.Load();
    EXPECT_THROW(m_settings.Save(anyNumber), ConfigurationError);
    ExpectSaved(m_machine, "VtMgServ", {"VTNVtMgServ"});
}

TEST_F(ServicesSettingsSave, EndsAtTheFirstRefusalWithoutHandles)
{
    AddAgents({"VtMgHost", "VtMgServ", "VtMgStor"});
    m_services.Add("VtMgServ", {});
    m_settings.Load();
    auto refuse = RefuseToOpen(m_machine.Parameters("VtMgServ").Path());
    try {
        m_settings.Save(anyNumber);
        ADD_FAILURE() << "nothing was thrown";
    } catch (ConfigurationError error) {
        EXPECT_EQ(error, configurationRefused);
    }
    ExpectSaved(m_machine, "VtMgHost", {"VTNVtMgHost"});
    support::ExpectAbsent(m_machine.Service("VtMgStor"), "Start");
    EXPECT_EQ(m_services.OpenHandles(), 0);
}

} // namespace
