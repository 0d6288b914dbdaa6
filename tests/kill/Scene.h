// The machine on which operations run in processes of their own, and what they leave on it.
#pragma once

#include "kill/KilledProcess.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace sweep {

// Whether everything is tried, not a sample.
[[nodiscard]] bool IsThorough();

// What an operation may change in the registry, in files and on the stand-ins; the script is for itself.
struct State
{
    Picture picture = {};
    std::string script = {}; // empty: there is none
    Json standIns = {};

    void AddStandIns(const Json& state);
    bool operator<(const State& other) const
    {
        return std::tie(picture, script) < std::tie(other.picture, other.script);
    }
};

// The machine of one operation, made anew for each run.
class Scene
{
  public:
    explicit Scene(const KilledOperation& operation) : m_operation(operation) {}

    // What is there before, without the stand-ins, which begin in the process that is started.
    State Prepare();
    // Runs the operation, or another on the same machine; what is there afterwards.
    [[nodiscard]] State Run(Task task, const Event& event = {}) { return Run(m_operation, task, event); }
    [[nodiscard]] State Run(const KilledOperation& operation, Task task, const Event& event = {});
    [[nodiscard]] const Report& LastReport() const { return m_report; }

  private:
    [[nodiscard]] State Now() const;

    const KilledOperation& m_operation;
    Places m_places;
    std::optional<Settings> m_settings;
    Json m_standIns;
    Report m_report;
};

// Empty for an item that is not there.
[[nodiscard]] std::string ContentOf(const Picture& picture, const std::string& item);
[[nodiscard]] std::set<std::string> ItemsOf(const std::vector<const Picture*>& pictures);

// Whether each flag in a stored number is as in one of the others.
[[nodiscard]] bool IsMixOfFlags(const std::string& content, const std::vector<std::string>& others);

// Numbers, from 1, of the calls for the registry, services, shares and files.
[[nodiscard]] std::vector<std::size_t> SettingsCalls(const std::vector<Call>& calls);

// The script without the empty lines at its end.
[[nodiscard]] std::string WithoutLineEndsBelow(std::string text);
[[nodiscard]] std::vector<std::string> LinesOf(const std::string& text);
// The lines that are not in the block.
[[nodiscard]] std::vector<std::string> OtherLines(const std::string& script,
                                                  const std::vector<std::string>& block);

} // namespace sweep
