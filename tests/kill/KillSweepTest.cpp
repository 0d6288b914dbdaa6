// Ends the process before every call that reads or writes a setting, and in the middle of every write to a
// file, and checks that what is left is old or new, and that doing it once more sets the rest right. A sample
// runs each time; all cases with VTN_THOROUGH in the environment.
#include "kill/Scene.h"

#include <algorithm>
#include <cstdio>
#include <ostream>
#include <set>

namespace {

using namespace sweep;

constexpr std::size_t sampleSize = 1; // ends of each operation, besides half a write
constexpr std::size_t parts = 4;      // tests of each operation, which may run side by side

// Some of the ends of an operation: this one, counted from 0, and each that is `parts` after it.
struct Part
{
    const KilledOperation* operation;
    std::size_t first;
};

std::ostream& operator<<(std::ostream& out, const Part& part)
{
    return out << part.operation->name;
}

std::vector<Part> Parts()
{
    std::vector<Part> all;
    for (const KilledOperation& operation : KilledOperations()) {
        if (!IsThorough() && !operation.isInSample)
            continue;
        const std::size_t count = IsThorough() ? parts : 1;
        for (std::size_t first = 0; first < count; ++first)
            all.push_back({&operation, first});
    }
    return all;
}

// --- the login script

// What half of the one write of a save leaves: the beginning of the new text before the end of the old one.
std::string HalfOf(std::string next, const std::string& before)
{
    while (next.size() + 1 < before.size())
        next += "\r\n";
    next.resize(std::max(next.size(), before.size()), '\n');
    const std::size_t half = next.size() / 2;
    return next.substr(0, half) + (half < before.size() ? before.substr(half) : "");
}

bool IsHalfOfAny(const std::string& script, const std::vector<std::string>& stages)
{
    for (std::size_t i = 1; i < stages.size(); ++i) {
        if (script == HalfOf(stages[i], stages[i - 1]))
            return true;
    }
    return false;
}

// Lines that stand in no stage of the script: at the seam of a write that was cut off.
std::size_t ForeignLines(const std::string& script, const std::vector<std::string>& stages)
{
    std::set<std::string> known = {""};
    for (const std::string& stage : stages) {
        for (const std::string& line : LinesOf(stage))
            known.insert(line);
    }
    return static_cast<std::size_t>(std::ranges::count_if(
        LinesOf(script), [&](const std::string& line) { return !known.contains(line); }));
}

// --- one operation

bool IsHalf(const Event& event)
{
    return event.happening == Happening::ProcessEndsHalfway;
}

// How the ends of one operation went.
struct Tally
{
    std::size_t ends = 0;
    std::size_t halves = 0;
    std::size_t seams = 0; // halves with one line that was made of two
    std::set<State> left;
};

class KillSweep : public testing::TestWithParam<Part>
{
  protected:
    KillSweep() : m_operation(*GetParam().operation), m_scene(m_operation) {}

    // The run that nothing ends, which the others are compared with.
    void RunToTheEnd()
    {
        m_before = m_scene.Prepare();
        m_after = m_scene.Run(Task::Perform);
        m_before.AddStandIns(m_scene.LastReport().standInsBefore);
        m_calls = m_scene.LastReport().calls;
        m_stages = ScriptStages(m_operation, m_before.script);
        m_block = LinesOf(BlockOfScript());
    }

    [[nodiscard]] std::vector<Event> Ends() const
    {
        std::vector<Event> ends;
        for (const std::size_t call : SettingsCalls(m_calls)) {
            ends.push_back({.call = call});
            if (m_calls[call - 1].function == "WriteFile")
                ends.push_back({.call = call, .happening = Happening::ProcessEndsHalfway});
        }
        return ends;
    }

    // Some ends before calls that change something, the first half write among them.
    [[nodiscard]] std::vector<Event> Sampled(const std::vector<Event>& ends) const
    {
        std::vector<Event> changes;
        std::ranges::copy_if(ends, std::back_inserter(changes), [&](const Event& event) {
            return !IsHalf(event) && m_calls[event.call - 1].role == Role::Changes;
        });
        std::vector<Event> sample;
        for (std::size_t i = 1; i <= sampleSize; ++i)
            sample.push_back(changes[changes.size() * i / (sampleSize + 1)]);
        const auto half = std::ranges::find_if(ends, IsHalf);
        if (half != ends.end())
            sample.push_back(*half);
        return sample;
    }

    // The ends that this test tries.
    [[nodiscard]] std::vector<Event> TriedOf(const std::vector<Event>& ends) const
    {
        if (!IsThorough())
            return Sampled(ends);
        std::vector<Event> tried;
        for (std::size_t i = GetParam().first; i < ends.size(); i += parts)
            tried.push_back(ends[i]);
        return tried;
    }

    void EndAt(const Event& event)
    {
        const Call& call = m_calls[event.call - 1];
        SCOPED_TRACE(std::string(m_operation.name) + (IsHalf(event) ? ", half of call " : ", before call ") +
                     std::to_string(event.call) + ": " + call.function + " " + call.place);
        static_cast<void>(m_scene.Prepare());
        const State left = m_scene.Run(Task::Perform, event);
        const std::vector<Call>& calls = m_scene.LastReport().calls;
        ASSERT_GE(calls.size() + (IsHalf(event) ? 1 : 0), event.call) << "it ended elsewhere";
        if (!IsHalf(event)) {
            EXPECT_EQ(calls.back().function, call.function);
        }
        ++(IsHalf(event) ? m_tally.halves : m_tally.ends);
        CheckLeft(left);
        CheckScript(left.script, IsHalf(event));
        // What does the same to the same machine needs no second look.
        if (m_tally.left.insert(left).second)
            CheckRepaired(m_scene.Run(Task::Repair), IsHalf(event));
    }

    Tally m_tally;

  private:
    [[nodiscard]] bool IsOldOrNew(const std::string& item, const std::string& now) const
    {
        const std::string old = ContentOf(m_before.picture, item);
        const std::string next = ContentOf(m_after.picture, item);
        if (now == old || now == next)
            return true;
        // A restart stops services in between.
        if (item.starts_with("service ") && item.ends_with(", state"))
            return now == std::to_string(SERVICE_STOPPED);
        // The settings in it are saved one by one.
        return item.ends_with(disableFlagsValue) && IsMixOfFlags(now, {old, next});
    }

    // Each setting, file and share, and each service, is as it was, or as it is to be.
    void CheckLeft(const State& left) const
    {
        for (const std::string& item : ItemsOf({&m_before.picture, &m_after.picture, &left.picture})) {
            const std::string now = ContentOf(left.picture, item);
            EXPECT_TRUE(IsOldOrNew(item, now)) << item << " is " << now;
        }
        const std::string active = std::string(activeDebuggerKey) + ", " + debuggerValue;
        const std::string parked = std::string(parkedDebuggerKey) + ", " + debuggerValue;
        const std::string system = ContentOf(m_before.picture, m_operation.startsWithTrap ? parked : active);
        EXPECT_TRUE(ContentOf(left.picture, active) == system || ContentOf(left.picture, parked) == system)
            << "the system's debugger is in neither key";
    }

    void CheckScript(const std::string& script, bool isHalf)
    {
        const auto isStage = [&](const std::string& stage) {
            return WithoutLineEndsBelow(stage) == WithoutLineEndsBelow(script);
        };
        if (std::ranges::any_of(m_stages, isStage))
            return;
        EXPECT_TRUE(isHalf && IsHalfOfAny(script, m_stages)) << script.size() << " bytes";
        const std::size_t foreign = ForeignLines(script, m_stages);
        EXPECT_LE(foreign, 1U);
        m_tally.seams += foreign;
    }

    // Everything is as without the end, but for the directory of reports, which stays when desktop management
    // was on in between. The lines of a script that was half written stay as they were left.
    void CheckRepaired(const State& repaired, bool isHalf) const
    {
        for (const std::string& item : ItemsOf({&m_after.picture, &repaired.picture})) {
            if (!item.ends_with("\\vtndata")) {
                EXPECT_EQ(ContentOf(repaired.picture, item), ContentOf(m_after.picture, item)) << item;
            }
        }
        if (!isHalf) {
            EXPECT_EQ(OtherLines(repaired.script, m_block), OtherLines(m_after.script, m_block));
        }
        EXPECT_EQ(repaired.script.starts_with(BlockOfScript()), m_after.script.starts_with(BlockOfScript()));
    }

    const KilledOperation& m_operation;
    Scene m_scene;
    State m_before;
    State m_after;
    std::vector<Call> m_calls;
    std::vector<std::string> m_stages;
    std::vector<std::string> m_block;
};

TEST_P(KillSweep, LeavesOldOrNewAndCanBeSetRight)
{
    ASSERT_NO_FATAL_FAILURE(RunToTheEnd());
    const std::vector<Event> ends = Ends();
    for (const Event& event : TriedOf(ends))
        ASSERT_NO_FATAL_FAILURE(EndAt(event));
    std::printf(
        "%s: %zu ends, tried before %zu calls and in the middle of %zu writes; %zu different states left, "
        "%zu with a line made of two\n",
        GetParam().operation->name, ends.size(), m_tally.ends, m_tally.halves, m_tally.left.size(),
        m_tally.seams);
}

std::string NameOf(const testing::TestParamInfo<Part>& info)
{
    std::string name = info.param.operation->name;
    std::erase(name, ' ');
    return name + std::to_string(info.param.first + 1);
}

INSTANTIATE_TEST_SUITE_P(Operations, KillSweep, testing::ValuesIn(Parts()), NameOf);

} // namespace
