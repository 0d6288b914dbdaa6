// The agent services of a machine in Wine's own registry, as the test wants them to be. For the tests of the
// Services page and of what it loads and saves.
#pragma once

#include "support/TestRegistry.h"
#include "sysaccess/core/AgentServices.h"

#include <map>
#include <string>
#include <vector>

// Puts everything back at the end.
class AgentMachine
{
  public:
    // Four services without sub-agents; no SNMP service.
    AgentMachine()
    {
        for (const AgentService& service : agentServices) {
            m_keys.try_emplace(service.name, service.Key());
            Service(service.name).Clear();
            Parameters(service.name).Create();
        }
        m_snmp.Delete();
    }

    [[nodiscard]] const support::TestKey& Service(const std::string& name) const { return m_keys.at(name); }
    [[nodiscard]] support::TestKey Parameters(const std::string& name) const
    {
        return Service(name).Subkey(parametersSubkey);
    }

    // A sub-agent that the user sees under its own name.
    void AddAgent(const std::string& service, const std::string& name) const
    {
        Service(service).Subkey(name).Create();
    }
    void SetActive(const std::string& service, const std::vector<std::string>& names) const
    {
        Parameters(service).SetMultiString(subServicesValue, names);
    }
    void InstallSnmp() const { m_snmp.Create(); }

  private:
    std::map<std::string, support::SavedKey> m_keys;
    support::SavedKey m_snmp{ServiceKey(snmpServiceName)};
};

// Fails the test at the caller's line unless the service starts just these sub-agents, and itself with the
// system, or not at all when there are none.
inline void ExpectSaved(const AgentMachine& machine, const std::string& service,
                        const std::vector<std::string>& names,
                        support::Location where = support::Location::current())
{
    if (names.empty())
        support::ExpectEqual({support::StoredValue{REG_MULTI_SZ, {}}},
                             machine.Parameters(service).Value(subServicesValue), service, where);
    else
        support::ExpectMultiString(machine.Parameters(service), subServicesValue, names, where);
    support::ExpectDword(machine.Service(service), startTypeValue,
                         names.empty() ? SERVICE_DISABLED : SERVICE_AUTO_START, where);
}
