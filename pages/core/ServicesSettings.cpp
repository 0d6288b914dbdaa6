// Loads and saves the agent services' sub-agents, start types and dependencies.
#include "pages/core/ServicesSettings.h"

#include "sysaccess/core/RegistryKey.h"
#include "sysaccess/core/ServiceQueries.h"

namespace {

// Whether the manager may be left alone, since it has just this already. To be asked before the registry is
// written: there the manager looks some of its answers up, while it goes by what it was configured with.
template <typename Value>
bool IsToStay(const UniqueServiceHandle& manager, const char* serviceName, Value ServiceConfig::*field,
              const Value& value)
{
    if (!EqualValuesStay::IsInForce())
        return false;
    const UniqueServiceHandle service = OpenServiceOf(manager, serviceName, SERVICE_QUERY_CONFIG);
    const std::optional<ServiceConfig> config = ReadServiceConfig(service.Get());
    return config.has_value() && (*config).*field == value;
}

void SetStartType(const UniqueServiceHandle& service, DWORD startType)
{
    ChangeServiceConfigA(service.Get(), SERVICE_NO_CHANGE, startType, SERVICE_NO_CHANGE, nullptr, nullptr,
                         nullptr, nullptr, nullptr, nullptr, nullptr);
}

void SetDependencies(const UniqueServiceHandle& service, const std::vector<std::string>& names)
{
    std::string block; // each name with its zero; the string's own zero ends the block
    for (const std::string& name : names)
        block.append(name.c_str(), name.size() + 1);
    ChangeServiceConfigA(service.Get(), SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, nullptr,
                         nullptr, nullptr, block.c_str(), nullptr, nullptr, nullptr);
}

// A service without sub-agents has nothing to do, so it does not start.
void SaveGroup(const UniqueServiceHandle& manager, const AgentService& service,
               const std::vector<std::string>& activeNames)
{
    const UniqueServiceHandle handle = OpenServiceOf(manager, service.name);
    const DWORD startType = activeNames.empty() ? SERVICE_DISABLED : SERVICE_AUTO_START;
    const bool stays = IsToStay(manager, service.name, &ServiceConfig::startType, startType);
    CRegistryKey(HKEY_LOCAL_MACHINE, service.ParametersKey().c_str())
        .SetMultiString(subServicesValue, activeNames);
    CRegistryKey(HKEY_LOCAL_MACHINE, service.Key().c_str()).SetDword(startTypeValue, startType);
    if (handle && !stays)
        SetStartType(handle, startType);
}

void SaveDependencies(const UniqueServiceHandle& manager, const std::vector<std::string>& names)
{
    const AgentService& mainService = agentServices.front();
    const bool stays = IsToStay(manager, mainService.name, &ServiceConfig::dependencies, names);
    CRegistryKey(HKEY_LOCAL_MACHINE, mainService.Key().c_str()).SetMultiString(dependenciesValue, names);
    const UniqueServiceHandle handle = OpenServiceOf(manager, mainService.name);
    if (handle && !stays)
        SetDependencies(handle, names);
}

bool IsSnmpInstalled()
{
    HKEY key = nullptr;
    const std::string path = ServiceKey(snmpServiceName);
    const LSTATUS opened = RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key);
    const UniqueKey owner(key);
    return opened == ERROR_SUCCESS;
}

} // namespace

void ServicesSettings::Load()
{
    groups.clear();
    for (const AgentService& service : agentServices) {
        try {
            groups.emplace_back(service);
        } catch (ConfigurationError) {
            continue; // not installed, or not to be read by this user
        }
    }
}

void ServicesSettings::Save(std::size_t limit) const
{
    const UniqueServiceHandle manager(OpenSCManagerA(nullptr, nullptr, GENERIC_EXECUTE));
    std::vector<std::string> dependencies;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const std::vector<std::string> activeNames = groups[i].ActiveNames(limit);
        // The first group read never becomes a dependency, on purpose: it is the main service, unless that
        // one could not be read.
        if (i != 0 && !activeNames.empty())
            dependencies.emplace_back(groups[i].Service().name);
        SaveGroup(manager, groups[i].Service(), activeNames);
    }
    if (IsSnmpInstalled())
        dependencies.emplace_back(snmpServiceName);
    SaveDependencies(manager, dependencies);
}
