// The table of agent services.
#include "sysaccess/core/AgentServices.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr auto HiddenSubkeys(const char* ownSnmpSubkey)
{
    std::array<const char*, nonAgentSubkeys.size() + 2> names{};
    std::copy(nonAgentSubkeys.begin(), nonAgentSubkeys.end(), names.begin());
    names[nonAgentSubkeys.size()] = ownSnmpSubkey;
    names[nonAgentSubkeys.size() + 1] = upsSubAgent; // switched by the set-up of the power supply
    return names;
}

// One agent in two parts.
constexpr std::array nicPairs = {AgentPair{nicSubAgent, nicSecondSubAgent}};

} // namespace

constinit const std::array<AgentService, 4> agentServices = {{
    {hostServiceName, snmpSubkey, HiddenSubkeys(snmpSubkey), {}},
    {serverServiceName, snmpSubkey, HiddenSubkeys(snmpSubkey), {}},
    {storageServiceName, snmpSubkey, HiddenSubkeys(snmpSubkey), {}},
    {nicServiceName, nicSnmpSubkey, HiddenSubkeys(nicSnmpSubkey), nicPairs},
}};

std::string AgentService::Key() const
{
    return ServiceKey(name);
}

std::string AgentService::ParametersKey() const
{
    return Key() + "\\" + parametersSubkey;
}

std::string AgentService::SnmpKey() const
{
    return Key() + "\\" + snmpSubkey;
}

std::string ServiceKey(const std::string& serviceName)
{
    return std::string(servicesKey) + "\\" + serviceName;
}

bool IsSameName(const char* left, const char* right)
{
    return _stricmp(left, right) == 0;
}

bool IsAmong(NameList names, const std::string& name)
{
    return std::any_of(names.begin(), names.end(),
                       [&](const char* other) { return IsSameName(other, name.c_str()); });
}
