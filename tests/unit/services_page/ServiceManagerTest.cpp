// Saving the agent services' settings to the system's own service manager.
#include "imports/ImportHook.h"
#include "ServicesSettingsTest.h"
#include "support/ThisProgram.h"
#include "sysaccess/core/ServiceQueries.h"

#include <array>

namespace {

using support::thisProgram;

// Services that are registered and never started.
class RegisteredServices
{
  public:
    RegisteredServices()
    {
        for (const AgentService& service : agentServices) {
            const UniqueServiceHandle handle(
                CreateServiceA(m_manager.Get(), service.name, nullptr, SERVICE_ALL_ACCESS,
                               SERVICE_WIN32_OWN_PROCESS, SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL,
                               "C:\\agent.exe", nullptr, nullptr, "VtnOld\0", nullptr, nullptr));
            EXPECT_TRUE(handle) << service.name << ": " << GetLastError();
        }
    }
    ~RegisteredServices()
    {
        for (const AgentService& service : agentServices) {
            const UniqueServiceHandle handle(OpenServiceA(m_manager.Get(), service.name, DELETE));
            DeleteService(handle.Get());
        }
    }
    RegisteredServices(const RegisteredServices&) = delete;
    RegisteredServices& operator=(const RegisteredServices&) = delete;

    // What the manager answers about a service.
    [[nodiscard]] DWORD StartType(const char* name) const
    {
        const UniqueServiceHandle handle(OpenServiceA(m_manager.Get(), name, SERVICE_QUERY_CONFIG));
        alignas(QUERY_SERVICE_CONFIGA) std::array<BYTE, 4096> buffer{};
        auto* const config = reinterpret_cast<QUERY_SERVICE_CONFIGA*>(buffer.data());
        DWORD size = 0;
        EXPECT_TRUE(QueryServiceConfigA(handle.Get(), config, sizeof buffer, &size)) << name;
        return config->dwStartType;
    }

  private:
    UniqueServiceHandle m_manager{OpenSCManagerA(nullptr, nullptr, SC_MANAGER_ALL_ACCESS)};
};

class ServicesSettingsRealManager : public testing::Test
{
  protected:
    // A sub-agent in each service; those of `active` are active.
    void AddAgents(const Names& active) const
    {
        for (const AgentService& service : agentServices)
            m_machine.AddAgent(service.name, "VTNA");
        for (const std::string& name : active)
            m_machine.SetActive(name, {"VTNA"});
    }

    void LoadAndSave()
    {
        m_settings.Load();
        m_settings.Save(anyNumber);
    }

    // The registry is saved before the services are registered and put back after they are removed.
    AgentMachine m_machine;
    RegisteredServices m_services;
    ServicesSettings m_settings;
    support::TestKey m_host = m_machine.Service("VtMgHost");
};

TEST_F(ServicesSettingsRealManager, TakesTheNewStartTypes)
{
    AddAgents({"VtMgHost", "VtMgStor"});
    LoadAndSave();
    EXPECT_EQ(m_services.StartType("VtMgHost"), DWORD{SERVICE_AUTO_START});
    EXPECT_EQ(m_services.StartType("VtMgServ"), DWORD{SERVICE_DISABLED});
    EXPECT_EQ(m_services.StartType("VtMgStor"), DWORD{SERVICE_AUTO_START});
    EXPECT_EQ(m_services.StartType("VTNNicMgmt"), DWORD{SERVICE_DISABLED});
    support::ExpectDword(m_machine.Service("VtMgServ"), "Start", SERVICE_DISABLED);
}

TEST_F(ServicesSettingsRealManager, TakesTheNewDependencies)
{
    m_machine.InstallSnmp();
    AddAgents({"VtMgHost", "VtMgStor"});
    int accepted = 0;
    auto change = support::HookImport<decltype(ChangeServiceConfigA)>(
        thisProgram, "ChangeServiceConfigA",
        [&](auto original, SC_HANDLE service, DWORD type, DWORD startType, DWORD errorControl, LPCSTR path,
            LPCSTR group, LPDWORD tag, LPCSTR dependencies, LPCSTR account, LPCSTR password, LPCSTR name) {
            if (dependencies != nullptr)
                m_host.DeleteValue("DependOnService"); // what is there afterwards, the manager has written
            const BOOL isAccepted = original(service, type, startType, errorControl, path, group, tag,
                                             dependencies, account, password, name);
            accepted += isAccepted;
            return isAccepted;
        });
    LoadAndSave();
    EXPECT_EQ(accepted, 5);
    support::ExpectMultiString(m_host, "DependOnService", {"VtMgStor", "SNMP"});
}

// With each change of a service the manager may write what else it knows of it.
TEST_F(ServicesSettingsRealManager, BringsNoFormerDependencyBack)
{
    m_machine.InstallSnmp();
    AddAgents({"VtMgHost", "VtMgServ"});
    support::ExpectMultiString(m_host, "DependOnService", {"VtnOld"});
    LoadAndSave();
    support::ExpectMultiString(m_host, "DependOnService", {"VtMgServ", "SNMP"});
    m_settings.Save(anyNumber);
    support::ExpectMultiString(m_host, "DependOnService", {"VtMgServ", "SNMP"});
}

TEST_F(ServicesSettingsRealManager, TakesTheValueAwayThatListsNoDependencies)
{
    AddAgents({"VtMgHost"});
    support::ExpectMultiString(m_host, "DependOnService", {"VtnOld"});
    LoadAndSave();
    support::ExpectAbsent(m_host, "DependOnService");
}

} // namespace
