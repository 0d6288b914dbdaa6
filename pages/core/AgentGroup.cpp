// Reads the sub-agents of a service from the registry.
#include "pages/core/AgentGroup.h"

#include "sysaccess/core/RegistryKey.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace {

struct NameLess
{
    bool operator()(const std::string& left, const std::string& right) const
    {
        return _stricmp(left.c_str(), right.c_str()) < 0;
    }
};

// Thousands of names are looked up in a list that may be as long.
using NameSet = std::set<std::string, NameLess>;

NameSet LoadActiveNames(const AgentService& service)
{
    CRegistryKey parameters(HKEY_LOCAL_MACHINE, service.ParametersKey().c_str());
    std::vector<std::string> names;
    parameters.ReadList(subServicesValue, names);
    return {names.begin(), names.end()};
}

// The name for the user: the subkey's own one if it has a text for it that can be read.
std::string DisplayNameOf(const std::string& serviceKey, const std::string& name)
try {
    CRegistryKey subkey(HKEY_LOCAL_MACHINE, (serviceKey + "\\" + name).c_str());
    DWORD type = REG_SZ;
    RegistryData data;
    DWORD size = 0;
    const DWORD result = RequireMemory(subkey.QueryValue(displayNameValue, type, data, size));
    const bool isText = result == ERROR_SUCCESS && type == REG_SZ && data != nullptr && size > 0;
    return isText ? reinterpret_cast<const char*>(data.get()) : name;
} catch (ConfigurationError) {
    return name; // the sub-agent can be switched without its display name
}

} // namespace

AgentGroup::AgentGroup(const AgentService& service) : m_service(&service)
{
    LoadEntries();
    for (const AgentPair& pair : service.pairs)
        JoinPair(pair);
}

void AgentGroup::LoadEntries()
{
    const std::string serviceKey = m_service->Key();
    const NameSet activeNames = LoadActiveNames(*m_service);
    std::vector<std::string> subkeyNames;
    CRegistryKey(HKEY_LOCAL_MACHINE, serviceKey.c_str()).EnumSubkeys(subkeyNames);
    m_entries.reserve(subkeyNames.size());
    for (std::string& name : subkeyNames) {
        AgentEntry& entry = m_entries.emplace_back();
        entry.name = std::move(name);
        entry.listable = !IsAmong(m_service->hiddenSubkeys, entry.name);
        if (!entry.listable)
            continue;
        entry.displayName = DisplayNameOf(serviceKey, entry.name);
        entry.active = activeNames.contains(entry.name);
    }
}

void AgentGroup::JoinPair(const AgentPair& pair)
{
    const auto first = IndexOf(pair.first);
    const auto second = IndexOf(pair.second);
    if (!first || !second)
        return;
    m_entries[*first].partner = second;
    m_entries[*second].partner = first;
    m_entries[*second].active = m_entries[*first].active;
}

std::optional<std::size_t> AgentGroup::IndexOf(const char* name) const
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(), [&](const AgentEntry& candidate) {
        return IsSameName(candidate.name.c_str(), name);
    });
    if (entry == m_entries.end())
        return std::nullopt;
    return static_cast<std::size_t>(entry - m_entries.begin());
}

void AgentGroup::SetActive(std::size_t index, bool active)
{
    AgentEntry& entry = m_entries[index];
    entry.active = active;
    if (entry.partner)
        m_entries[*entry.partner].active = active;
}

std::vector<std::string> AgentGroup::ActiveNames(std::size_t limit) const
{
    std::vector<std::string> names;
    for (const AgentEntry& entry : m_entries) {
        if (entry.active && names.size() < limit)
            names.push_back(entry.name);
    }
    return names;
}
