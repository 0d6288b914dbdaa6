// All sections together.
#include "command/Machine.h"

#include "command/AgentsSection.h"
#include "command/BoardSection.h"
#include "command/CommandError.h"
#include "command/DesktopSection.h"
#include "command/ErrorTexts.h"
#include "command/ProcessMonitorSection.h"
#include "command/SnmpSection.h"
#include "command/StorageSection.h"
#include "command/Values.h"

#include "sysaccess/core/ConfigurationError.h"
#include "sysaccess/core/RegistryKey.h"

#include <algorithm>
#include <new>

namespace {

// Set by a test, for DSC; not looked at when it comes back.
constexpr char desiredStateMember[] = "_inDesiredState";

[[noreturn]] void Fail(const Section& section, ConfigurationError textId, const std::string& more)
{
    throw CommandError(ExitCode::Failed, section.Name() + ": " + ErrorText(static_cast<UINT>(textId)) + more);
}

} // namespace

// In the order in which the applet saves its pages.
Machine::Machine()
{
    m_sections.push_back(std::make_unique<AgentsSection>());
    m_sections.push_back(std::make_unique<SnmpSection>());
    m_sections.push_back(std::make_unique<ProcessMonitorSection>());
    m_sections.push_back(std::make_unique<StorageSection>());
    m_sections.push_back(std::make_unique<DesktopSection>());
    m_sections.push_back(std::make_unique<BoardSection>());
}

Json Machine::Schema() const
{
    Json members = Json::object();
    for (const auto& section : m_sections)
        members[section->Name()] = section->Schema();
    members[desiredStateMember] = {
        {"type", {"boolean", "null"}},
        {"readOnly", true},
        {"description", "Whether the machine is as the document says: in the answer of a test alone."}};
    Json schema = {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                   {"title", "Configuration of the Norvale Management Agents"}};
    schema.update(ObjectSchema("The settings of the agents; only members that are named are touched.",
                               std::move(members)));
    return schema;
}

void Machine::Load()
{
    for (const auto& section : m_sections) {
        try {
            section->Load();
        } catch (ConfigurationError textId) {
            Fail(*section, textId, " Run as an administrator, where the agents are installed.");
        }
    }
    m_loaded = Show();
}

Json Machine::Show() const
{
    Json document = Json::object();
    for (const auto& section : m_sections) {
        if (section->WhyNotHere().empty())
            document[section->Name()] = section->Show();
    }
    return document;
}

Section& Machine::Find(const std::string& name)
{
    const auto found =
        std::ranges::find_if(m_sections, [&](const auto& section) { return section->Name() == name; });
    if (found != m_sections.end())
        return **found;
    std::vector<std::string> names;
    for (const auto& section : m_sections)
        names.push_back(section->Name());
    RefuseMember(name, "there is no such member; there are " + Listed(names));
}

void Machine::Take(const Json& document)
{
    for (const auto& [name, wanted] : document.items()) {
        if (name == desiredStateMember)
            continue;
        Section& section = Find(name);
        const std::string whyNot = section.WhyNotHere();
        if (!whyNot.empty())
            RefuseMember(name, "cannot be set, since " + whyNot);
        section.Take(wanted);
    }
}

bool Machine::IsChanged(const Section& section) const
{
    return m_loaded.contains(section.Name()) && section.Show() != m_loaded[section.Name()];
}

std::vector<MemberChange> Machine::Changes() const
{
    std::vector<MemberChange> changes;
    for (const auto& section : m_sections) {
        if (IsChanged(*section))
            std::ranges::move(ChangesBetween(section->Name(), m_loaded[section->Name()], section->Show(),
                                             section->Absent()),
                              std::back_inserter(changes));
    }
    return changes;
}

void Machine::Save()
{
    for (const auto& section : m_sections) {
        if (IsChanged(*section))
            section->Prepare();
    }
    try {
        SaveSections();
    } catch (const CommandError& error) {
        throw CommandError(error.Code(), error.Text() + WrittenSoFar());
    } catch (const std::bad_alloc&) {
        throw CommandError(ExitCode::Failed, "There is not enough memory to go on." + WrittenSoFar());
    }
}

void Machine::SaveSections()
{
    const EqualValuesStay equalValuesStay;
    for (const auto& section : m_sections) {
        if (!IsChanged(*section))
            continue;
        try {
            section->Save();
        } catch (ConfigurationError textId) {
            Fail(*section, textId, "");
        }
    }
}

std::string Machine::WrittenSoFar() const
{
    Machine now;
    try {
        now.Load();
    } catch (const CommandError&) {
        return " What had been written before cannot be read; run 'vtncfg get'.";
    }
    std::vector<std::string> paths;
    for (const MemberChange& change : ChangesBetween("", m_loaded, now.m_loaded, nullptr))
        paths.push_back(change.path);
    return paths.empty() ? " Nothing had been written before." : " Written before: " + Listed(paths) + ".";
}

Json ChangedSections(const std::vector<MemberChange>& changes)
{
    Json names = Json::array();
    for (const MemberChange& change : changes) {
        const std::string name = change.path.substr(0, change.path.find('.'));
        if (names.empty() || names.back() != name)
            names.push_back(name);
    }
    return names;
}
