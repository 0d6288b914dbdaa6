// The members of "agents": services, and the sub-agents that each of them has on this machine.
#include "command/AgentsSection.h"

#include "command/CodePage.h"
#include "command/CommandError.h"
#include "command/Values.h"

#include <algorithm>
#include <limits>

namespace {

std::vector<std::string> ListableNames(const AgentGroup& group)
{
    std::vector<std::string> names;
    for (const AgentEntry& entry : group.Entries()) {
        if (entry.listable)
            names.push_back(ToUtf8(entry.name));
    }
    return names;
}

// Index of the sub-agent, whose name the document may have in any letter case.
std::size_t IndexIn(const AgentGroup& group, const std::string& name, const std::string& path)
{
    const std::vector<AgentEntry>& entries = group.Entries();
    const auto isWanted = [&](const AgentEntry& entry) {
        return entry.listable && IsSameName(ToUtf8(entry.name).c_str(), name.c_str());
    };
    const auto found =
        name.find('\0') == std::string::npos ? std::ranges::find_if(entries, isWanted) : entries.end();
    if (found == entries.end())
        RefuseMember(path,
                     "there is no such sub-agent on this machine; there are " + Listed(ListableNames(group)));
    return static_cast<std::size_t>(found - entries.begin());
}

// Partners are switched together, so the document must not say two things of them.
void RequireAgreement(const AgentGroup& group, const std::map<std::size_t, bool>& wanted,
                      const std::string& path)
{
    const std::vector<AgentEntry>& entries = group.Entries();
    for (const auto& [index, active] : wanted) {
        const auto partner = entries[index].partner ? wanted.find(*entries[index].partner) : wanted.end();
        if (partner != wanted.end() && partner->second != active)
            RefuseMember(path + "." + entries[index].name, "is switched together with " +
                                                               entries[partner->first].name +
                                                               ", which the document sets to the opposite");
    }
}

} // namespace

AgentsSection::AgentsSection() : Section("agents") {}

Json AgentsSection::Schema() const
{
    Json services = Json::object();
    for (const AgentService& service : agentServices)
        services[service.name] = {{"type", "object"},
                                  {"description", "Its sub-agents, by name: true for those that it starts."},
                                  {"additionalProperties", {{"type", "boolean"}}}};
    return ObjectSchema("The Services page: the agent services of this machine.", std::move(services));
}

void AgentsSection::Load()
{
    m_settings.Load();
}

Json AgentsSection::Show() const
{
    Json services = Json::object();
    for (const AgentGroup& group : m_settings.groups) {
        Json& agents = services[group.Service().name] = Json::object();
        for (const AgentEntry& entry : group.Entries()) {
            if (entry.listable)
                agents.emplace(ToUtf8(entry.name), entry.active);
        }
    }
    return services;
}

AgentGroup& AgentsSection::GroupOf(const std::string& service)
{
    const auto isWanted = [&](const auto& candidate) { return service == candidate.name; };
    if (std::ranges::none_of(agentServices, isWanted)) {
        std::vector<std::string> names;
        std::ranges::transform(agentServices, std::back_inserter(names), &AgentService::name);
        RefuseMember(PathOf(service), "there is no such agent service; there are " + Listed(names));
    }
    const auto group = std::ranges::find_if(
        m_settings.groups, [&](const AgentGroup& candidate) { return isWanted(candidate.Service()); });
    if (group == m_settings.groups.end())
        RefuseMember(PathOf(service), "this service has no sub-agents here that could be read");
    return *group;
}

void AgentsSection::Take(const Json& wanted)
{
    RequireObject(wanted, Name());
    for (const auto& [service, agents] : wanted.items())
        TakeGroup(GroupOf(service), agents, PathOf(service));
}

void AgentsSection::TakeGroup(AgentGroup& group, const Json& wanted, const std::string& path)
{
    RequireObject(wanted, path);
    Switches switches;
    for (const auto& [name, value] : wanted.items()) {
        const std::string agentPath = std::string(path).append(".").append(name);
        const bool active = RequireBoolean(value, agentPath);
        if (!switches.emplace(IndexIn(group, name, agentPath), active).second)
            RefuseMember(agentPath, "stands there twice, in different letter case; leave one of them out");
    }
    RequireAgreement(group, switches, path);
    for (const auto& [index, active] : switches)
        group.SetActive(index, active);
}

void AgentsSection::Save()
{
    // The page gives a service no more sub-agents than its list shows; the document shows them all.
    m_settings.Save(std::numeric_limits<std::size_t>::max());
}
