// The members of "processMonitor": names of processes and their options.
#include "command/ProcessMonitorSection.h"

#include "command/CodePage.h"
#include "command/CommandError.h"
#include "command/Values.h"
#include "pages/core/TaskList.h"

#include <algorithm>
#include <array>
#include <set>

namespace {

// By their numbers.
constexpr std::array optionNames = {"none", "start", "stop", "startAndStop"};

// Stands for every process that the document does not name.
constexpr char allOthers[] = "*";

constexpr char blanks[] = " \t\n\v\f\r";

BYTE OptionOf(const MonitoredProcess& process)
{
    return process.option & ProcessOptionMask;
}

// Options that later agents may bring have no names and are not shown.
bool IsShown(const MonitoredProcess& process)
{
    return OptionOf(process) != ProcessOptionNone && OptionOf(process) < optionNames.size();
}

BYTE RequireOption(const Json& value, const std::string& path)
{
    const std::string text = RequireText(value, path);
    const auto found = std::ranges::find(optionNames, text);
    if (found == optionNames.end())
        RefuseMember(path, "\"" + text + "\" is none of " + Listed({optionNames.begin(), optionNames.end()}));
    return static_cast<BYTE>(found - optionNames.begin());
}

// As the page takes a name that is typed: without blanks around it, in lower case.
std::string RequireName(const std::string& text, const std::string& path)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        RefuseMember(path, "a process has a name");
    const std::string trimmed = text.substr(first, text.find_last_not_of(blanks) + 1 - first);
    if (trimmed.find_first_of(std::string("\0\t", 2)) != std::string::npos)
        RefuseMember(path, "the name of a process holds neither tabs nor zero characters");
    const std::optional<std::string> name = LowerFromUtf8(trimmed);
    if (!name)
        RefuseMember(path, "holds a character that the code page of this system does not have");
    return *name;
}

// As the page shows a name that is stored.
std::string ListedName(const std::string& stored)
{
    const std::string name = stored.substr(0, stored.find('\t'));
    return LowerFromUtf8(ToUtf8(name)).value_or(name);
}

} // namespace

ProcessMonitorSection::ProcessMonitorSection() : Section("processMonitor") {}

Json ProcessMonitorSection::Schema() const
{
    return {{"type", "object"},
            {"description", "The Process Monitor page: what the host agent reports of processes, by name."},
            {"properties",
             {{allOthers,
               {{"const", optionNames.front()},
                {"description", "Every process that is not named here is not watched."}}}}},
            {"additionalProperties", {{"enum", optionNames}}}};
}

// Names in the form and order in which the page lists them, each once.
void ProcessMonitorSection::Load()
{
    std::set<std::string> names;
    for (const MonitoredProcess& process : LoadMonitoredProcesses()) {
        MonitoredProcess& listed = m_processes.emplace_back(process);
        listed.name = ListedName(process.name);
        if (listed.name.empty() || !names.insert(listed.name).second)
            m_processes.pop_back();
    }
    Sort();
}

void ProcessMonitorSection::Sort()
{
    std::ranges::stable_sort(m_processes, [](const MonitoredProcess& left, const MonitoredProcess& right) {
        return IsListedBefore(left.name + "\t", right.name + "\t");
    });
}

Json ProcessMonitorSection::Show() const
{
    Json shown = {{allOthers, optionNames.front()}};
    for (const MonitoredProcess& process : m_processes) {
        if (IsShown(process))
            shown.emplace(ToUtf8(process.name), optionNames[OptionOf(process)]);
    }
    return shown;
}

Json ProcessMonitorSection::Absent() const
{
    return optionNames.front();
}

ProcessMonitorSection::Options ProcessMonitorSection::OptionsOf(const Json& wanted) const
{
    Options options;
    for (const auto& [text, value] : wanted.items()) {
        const BYTE option = RequireOption(value, PathOf(text));
        if (text == allOthers) {
            if (option != ProcessOptionNone)
                RefuseMember(PathOf(text), "all other processes can only be \"none\"");
            continue;
        }
        // A stored name is taken as it is shown, also where nobody could type it.
        const std::optional<std::string> stored = LowerFromUtf8(text);
        const bool isListed =
            stored && std::ranges::count(m_processes, *stored, &MonitoredProcess::name) != 0;
        if (!options.emplace(isListed ? *stored : RequireName(text, PathOf(text)), option).second)
            RefuseMember(PathOf(text), "stands there twice, in different writing; leave one of them out");
    }
    return options;
}

void ProcessMonitorSection::Take(const Json& wanted)
{
    RequireObject(wanted, Name());
    const Options options = OptionsOf(wanted);
    if (wanted.contains(allOthers)) {
        for (MonitoredProcess& process : m_processes) {
            if (IsShown(process) && !options.contains(process.name))
                process.option &= ProcessAddedByHand;
        }
    }
    for (const auto& [name, option] : options)
        SetOption(name, option);
    Sort();
}

// The mark stays, as with the page's radio buttons.
void ProcessMonitorSection::SetOption(const std::string& name, BYTE option)
{
    const auto process = std::ranges::find(m_processes, name, &MonitoredProcess::name);
    if (process != m_processes.end()) {
        if (OptionOf(*process) >= optionNames.size())
            RefuseMember(PathOf(ToUtf8(name)),
                         "has an option that vtncfg does not know; choose another on the page");
        if (OptionOf(*process) != option)
            process->option = static_cast<BYTE>(option | (process->option & ProcessAddedByHand));
        return;
    }
    if (option == ProcessOptionNone)
        return;
    m_processes.push_back({option, name});
    m_newNames.push_back(name);
}

// On the page a process that runs is listed already; any other name has to be typed.
void ProcessMonitorSection::MarkNewNames()
{
    if (m_newNames.empty())
        return;
    std::set<std::string> running;
    for (const std::string& name : RunningProcessNames())
        running.insert(ListedName(name));
    for (MonitoredProcess& process : m_processes) {
        if (std::ranges::count(m_newNames, process.name) != 0 && !running.contains(process.name))
            process.option |= ProcessAddedByHand;
    }
}

void ProcessMonitorSection::Save()
{
    MarkNewNames();
    SaveMonitoredProcesses(m_processes);
}
