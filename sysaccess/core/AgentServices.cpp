// The table of agent services.
#include "sysaccess/core/AgentServices.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr auto HiddenSubkeys(const char* snmpSubkey)
{
    std::array<const char*, nonAgentSubkeys.size() + 2> names{};
    std::copy(nonAgentSubkeys.begin(), nonAgentSubkeys.end(), names.begin());
    names[nonAgentSubkeys.size()] = snmpSubkey;
    names[nonAgentSubkeys.size() + 1] = "VTNUPS"; // switched by the set-up of the power supply
    return names;
}

constexpr const char* snmpSubkey = "VTNSNMP";
constexpr const char* nicSnmpSubkey = "VTNNISNMP";

// One agent in two parts.
constexpr std::array nicPairs = {AgentPair{"VTNMNIC", "VTNNICS"}};

} // namespace

constinit const std::array<AgentService, 4> agentServices = {{
    {"VtMgHost", snmpSubkey, HiddenSubkeys(snmpSubkey), {}},
    {"VtMgServ", snmpSubkey, HiddenSubkeys(snmpSubkey), {}},
    {"VtMgStor", snmpSubkey, HiddenSubkeys(snmpSubkey), {}},
    {"VTNNicMgmt", nicSnmpSubkey, HiddenSubkeys(nicSnmpSubkey), nicPairs},
}};

std::string AgentService::Key() const
{
    return ServiceKey(name);
}

std::string AgentService::ParametersKey() const
{
    return Key() + "\\Parameters";
}

std::string AgentService::SnmpKey() const
{
    return Key() + "\\" + snmpSubkey;
}

std::string ServiceKey(const std::string& serviceName)
{
    return "SYSTEM\\CurrentControlSet\\Services\\" + serviceName;
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
