// A section whose members are fixed: one table row each, from which reading, writing and schema follow.
#pragma once

#include "command/CommandError.h"
#include "command/Section.h"
#include "command/Values.h"

#include <algorithm>
#include <span>
#include <vector>
#include <windows.h>

// One member of the document and its place in the settings.
template <typename Settings>
struct Member
{
    const char* name;
    const char* description;
    Json (*schema)(const char* description);
    // Null when this machine does not have it.
    Json (*show)(const Settings& settings);
    void (*take)(Settings& settings, const Json& value, const std::string& path);
    DWORD change = 0; // the bit that stands for it where the settings are saved, if they are saved by bits
};

// A member that is true while a field of the settings is not 0, or, the other way round, while it is.
template <auto field, bool whileZero, typename Settings>
constexpr Member<Settings> FlagMember(const char* name, const char* description, DWORD change = 0)
{
    return {name,
            description,
            BooleanSchema,
            [](const Settings& settings) -> Json { return (settings.*field == 0) == whileZero; },
            [](Settings& settings, const Json& value, const std::string& path) {
                settings.*field = RequireBoolean(value, path) == whileZero ? 0 : 1;
            },
            change};
}

// Its members, read from and written to one settings object.
template <typename Settings>
class TableSection : public Section
{
  public:
    // `members` must live as long as the section.
    TableSection(const char* name, const char* description, std::span<const Member<Settings>> members)
        : Section(name), m_description(description), m_members(members)
    {
    }

    // An object with the members of the table.
    [[nodiscard]] Json Schema() const override
    {
        Json members = Json::object();
        for (const Member<Settings>& member : m_members)
            members[member.name] = member.schema(member.description);
        return ObjectSchema(m_description, std::move(members));
    }

    // All members that this machine has.
    [[nodiscard]] Json Show() const override
    {
        Json shown = Json::object();
        for (const Member<Settings>& member : m_members) {
            Json value = member.show(m_settings);
            if (!value.is_null())
                shown[member.name] = std::move(value);
        }
        return shown;
    }

    // Takes over those that differ from what is shown; others may be what the rules do not allow any more.
    void Take(const Json& wanted) override
    {
        RequireObject(wanted, Name());
        for (const auto& [name, value] : wanted.items()) {
            const Member<Settings>& member = Find(name);
            if (value == member.show(m_settings))
                continue;
            member.take(m_settings, value, PathOf(name));
            m_changes |= member.change;
        }
    }

  protected:
    Settings m_settings{};
    DWORD m_changes = 0; // bits of the members that Take has changed

  private:
    [[nodiscard]] const Member<Settings>& Find(const std::string& name) const
    {
        const auto found = std::ranges::find_if(
            m_members, [&](const Member<Settings>& member) { return name == member.name; });
        if (found != m_members.end())
            return *found;
        std::vector<std::string> names;
        std::ranges::transform(m_members, std::back_inserter(names), &Member<Settings>::name);
        RefuseMember(PathOf(name), "there is no such member; there are " + Listed(names));
    }

    const char* m_description;
    std::span<const Member<Settings>> m_members;
};
