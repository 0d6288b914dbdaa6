// The services and the agent groups, as data and as what is done with it.
#include "Agents.h"

#include "../service/Behaviour.h"
#include "../support/Registry.h"
#include "../support/Services.h"
#include "sysaccess/core/AgentNames.h"

#include <string>
#include <vector>

namespace demo {

namespace {

struct MachineService
{
    ServiceEntry entry;
    Behaviour behaviour;
};

// In the order in which they start. The host agents take their time, so that the please-wait window can be
// seen. The first ones and the mail store are there for the list of processes.
const std::vector<MachineService>& Services()
{
    static const std::vector<MachineService> services = {
        {{"Netlogon", "Net Logon", {}, "lsass.exe"}, {}},
        {{"DNS", "DNS Server", {}, "dns.exe"}, {}},
        {{"NtFrs", "File Replication Service", {}, "ntfrs.exe"}, {}},
        {{"Dfs", "Distributed File System", {}, "dfssvc.exe"}, {}},
        {{"Spooler", "Print Spooler", {}, "spoolsv.exe"}, {}},
        {{"NvMail", "Norvale Mail Store", {}, "nvmail.exe"}, {}},
        {{snmpServiceName, "SNMP Service", {}, "snmp.exe"},
         {.startDelay = 300, .stopDelay = 300, .waitHint = 500}},
        {{serverServiceName, "Norvale Server Agents", {snmpServiceName}, "vtmgserv.exe"},
         {.startDelay = 200, .stopDelay = 400, .waitHint = 500}},
        {{storageServiceName, "Norvale Storage Agents", {snmpServiceName}, "vtmgstor.exe"},
         {.startDelay = 200, .stopDelay = 400, .waitHint = 500}},
        {{nicServiceName, "Norvale NIC Agents", {snmpServiceName}, "vtnnicmg.exe"},
         {.startDelay = 200, .stopDelay = 200, .waitHint = 500}},
        {{hostServiceName,
          "Norvale Host Agents",
          {serverServiceName, storageServiceName, nicServiceName, snmpServiceName},
          "vtmghost.exe"},
         {.startDelay = 1200,
          .startSteps = 3,
          .stopDelay = 1500,
          .stopSteps = 2,
          .waitHint = 600,
          .readyMutex = alerterMutex}},
        {{webAgentServiceName, "Norvale Web Management Agent", {}, "vtnwebwm.exe"},
         {.startDelay = 300, .stopDelay = 300, .waitHint = 500}},
    };
    return services;
}

struct SubAgent
{
    const char* key;
    const char* displayName; // null: the sub-agent is shown by its key
};

struct AgentGroup
{
    const char* service;
    const char* snmpKey;
    std::vector<std::string> subServices; // the active sub-agents
    std::vector<SubAgent> subAgents;
    std::vector<const char*> otherKeys; // subkeys that are no sub-agents, spelled as installers spell them
};

// One of the active names is spelled in another letter case than its key, and one has no key any more.
const AgentGroup hostAgents = {
    hostServiceName,
    snmpSubkey,
    {"vtnmhost", "VTNPERF", "VTNPROC", "VTNALERT", "VTNGONE"},
    {{"VTNMHOST", "Host Information Agent"},
     {"VTNPERF", "OS Performance Agent"},
     {"VTNPROC", "Process Monitor Agent"},
     {"VTNALERT", "Remote Alerter Agent"},
     {"VTNSWINV", "Software Inventory Agent"},
     {"VTNTHRSH", nullptr}},
    {upsSubAgent, "SECURITY", "AppTrap", "LINKAGE", "Enum"},
};
const AgentGroup serverAgents = {
    serverServiceName,
    snmpSubkey,
    {"VTNHEALTH", "VTNSTDEQ", "VTNRLMB"},
    {{"VTNHEALTH", "Server Health Agent"},
     {"VTNSTDEQ", "Standard Equipment Agent"},
     {"VTNRLMB", "Remote Lumora Agent"},
     {rackSubAgent, "Rack Infrastructure Agent"},
     {"VTNPOWER", nullptr}},
    {"Security", "linkage"},
};
const AgentGroup storageAgents = {
    storageServiceName,
    snmpSubkey,
    {"VTNFCA", "VTNMIDA", "VTNSAS"},
    {{"VTNFCA", "Fibre Array Agent"},
     {"VTNMIDA", "Quenta Array Agent"},
     {"VTNSAS", "SAS Agent"},
     {"VTNSCSI", "SCSI Agent"},
     {"VTNATA", "ATA Disk Agent"}},
    {"Enum"},
};
// The last two are one agent in two parts, switched together.
const AgentGroup nicAgents = {
    nicServiceName,
    nicSnmpSubkey,
    {nicSubAgent, nicSecondSubAgent},
    {{"VTNVLAN", "VLAN Agent"}, {nicSubAgent, "NIC Management Agent"}, {nicSecondSubAgent, "NIC SNMP Agent"}},
    {"Linkage"},
};

std::string ServiceKey(const AgentGroup& group)
{
    return servicesKey + ("\\" + std::string(group.service));
}

void MakeGroup(const AgentGroup& group)
{
    constexpr DWORD twoMinutes = 120'000;
    const std::string service = ServiceKey(group) + '\\';
    Key::Create(service + parametersSubkey).SetStrings(subServicesValue, group.subServices);
    for (const auto* key : group.otherKeys)
        (void)Key::Create(service + key);

    auto snmp = Key::Create(service + group.snmpKey);
    snmp.SetDword(setsEnabledValue, 1);
    snmp.SetDword(timeoutValue, twoMinutes);
    for (const auto& agent : group.subAgents) {
        auto key = Key::Create(service + agent.key);
        key.SetDword(timeoutValue, twoMinutes);
        if (agent.displayName != nullptr)
            key.SetString(displayNameValue, agent.displayName);
    }
}

// A display name that holds a variable is of a type that is not shown.
void GivePowerAgentAnExpandedName()
{
    Key::Create(ServiceKey(serverAgents) + "\\VTNPOWER")
        .SetExpandString(displayNameValue, "%ProductFamily% Power Agent");
}

} // namespace

void MakeAgents()
{
    for (const auto& service : Services()) {
        InstallService(service.entry);
        StoreBehaviour(service.entry.name, service.behaviour);
    }
    for (const auto& group : {hostAgents, serverAgents, storageAgents, nicAgents})
        MakeGroup(group);
    GivePowerAgentAnExpandedName();
}

void BringUpAgents()
{
    for (const auto& service : Services())
        BringUpService(service.entry.name);
}

} // namespace demo
