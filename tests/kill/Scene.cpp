// See the header.
#include "kill/Scene.h"

#include "machine/WatchedImports.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace sweep {
namespace {

// The low byte of a stored number, which has all flags that are used.
unsigned FlagsOf(const std::string& content)
{
    unsigned flags = 0;
    std::sscanf(content.c_str(), "type 4, 4 bytes: %2x", &flags);
    return flags;
}

} // namespace

bool IsThorough()
{
    return std::getenv("VTN_THOROUGH") != nullptr;
}

void State::AddStandIns(const Json& state)
{
    standIns = state;
    for (const auto& [name, service] : state.at("services").items()) {
        for (const auto& [field, value] : service.items())
            picture["service " + name + ", " + field] = value.dump();
    }
    picture["share"] = state.value("share", Json()).dump();
    picture["board"] = state.at("board").dump();
}

State Scene::Prepare()
{
    m_settings.reset();
    m_settings.emplace(m_places);
    m_standIns = PrepareMachine(m_operation, *m_settings);
    return Now();
}

State Scene::Run(const KilledOperation& operation, Task task, const Event& event)
{
    m_report =
        RunOperation(operation, task, event, {m_places.windows.Path(), m_places.scripts.Path()}, m_standIns);
    m_standIns = m_report.standIns;
    State state = Now();
    state.AddStandIns(m_standIns);
    return state;
}

State Scene::Now() const
{
    const std::string script = m_places.scripts.File("LOGIN.BAT");
    State state{.script = support::ReadBytes(script).value_or("")};
    m_settings->AddTo(state.picture);
    state.picture.erase(script);
    return state;
}

std::string ContentOf(const Picture& picture, const std::string& item)
{
    const auto found = picture.find(item);
    return found == picture.end() ? "" : found->second;
}

std::set<std::string> ItemsOf(const std::vector<const Picture*>& pictures)
{
    std::set<std::string> items;
    for (const Picture* const picture : pictures) {
        for (const auto& [item, content] : *picture)
            items.insert(item);
    }
    return items;
}

bool IsMixOfFlags(const std::string& content, const std::vector<std::string>& others)
{
    unsigned strangers = ~0U; // flags that are as in none of the others
    for (const std::string& other : others)
        strangers &= FlagsOf(content) ^ FlagsOf(other);
    return strangers == 0;
}

std::vector<std::size_t> SettingsCalls(const std::vector<Call>& calls)
{
    const auto functions = SettingsImports::Codes();
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        if (functions.contains(calls[i].function))
            numbers.push_back(i + 1);
    }
    return numbers;
}

std::string WithoutLineEndsBelow(std::string text)
{
    return text.erase(text.find_last_not_of("\r\n") + 1);
}

std::vector<std::string> LinesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(WithoutLineEndsBelow(line));
    return lines;
}

std::vector<std::string> OtherLines(const std::string& script, const std::vector<std::string>& block)
{
    std::vector<std::string> lines = LinesOf(WithoutLineEndsBelow(script));
    std::erase_if(lines,
                  [&](const std::string& line) { return std::ranges::find(block, line) != block.end(); });
    return lines;
}

} // namespace sweep
