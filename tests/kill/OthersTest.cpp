// Lets others work on the same settings at every step of an operation: another applet or vtncfg that saves
// all of its own, and a session or host that ends. A sample runs each time; all cases with VTN_THOROUGH in
// the environment.
#include "kill/Scene.h"

#include <algorithm>
#include <cstdio>
#include <ostream>

namespace {

using namespace sweep;

constexpr std::size_t encounterSampleSize = 2; // calls of each operation

// Who comes at each call of an operation.
struct Encounter
{
    const char* operation;
    Happening happening;
    const char* other;
    bool isInSample;
};

std::ostream& operator<<(std::ostream& out, const Encounter& encounter)
{
    return out << encounter.operation << " and " << encounter.other;
}

constexpr Encounter encounters[] = {
    {"save SNMP Settings", Happening::AnotherSaves, "save other SNMP Settings", false},
    {"save SNMP Settings", Happening::AnotherSaves, "set with vtncfg", false},
    {"save Services", Happening::AnotherSaves, "set with vtncfg", false},
    {"save Storage", Happening::AnotherSaves, "set with vtncfg", false},
    {"switch on in a large script", Happening::AnotherSaves, "switch on in a large script", true},
    {"switch off", Happening::AnotherSaves, "switch off", false},
    {"save SNMP Settings", Happening::SessionEnds, "the end of the session", false},
    {"switch on", Happening::SessionEnds, "the end of the session", false},
    {"restart the agents", Happening::SessionEnds, "the end of the session", true},
    {"clear the thresholds", Happening::SessionEnds, "the end of the session", false},
    {"save SNMP Settings", Happening::HostCloses, "the end of its host", false},
    {"switch on", Happening::HostCloses, "the end of its host", false},
    {"restart the agents", Happening::HostCloses, "the end of its host", true},
    {"clear the thresholds", Happening::HostCloses, "the end of its host", true},
};

std::vector<Encounter> Encounters()
{
    std::vector<Encounter> all;
    std::ranges::copy_if(encounters, std::back_inserter(all),
                         [](const Encounter& encounter) { return IsThorough() || encounter.isInSample; });
    return all;
}

class Others : public testing::TestWithParam<Encounter>
{
  protected:
    void RunEachAlone()
    {
        const State before = m_scene.Prepare();
        m_script = before.script;
        m_known.push_back(m_scene.Run(Task::Perform));
        m_calls = m_scene.LastReport().calls;
        m_boxes = m_scene.LastReport().boxes;
        m_known.push_back(before);
        m_known.back().AddStandIns(m_scene.LastReport().standInsBefore);
        if (GetParam().happening != Happening::AnotherSaves)
            return;
        // Also one after the other, either way.
        const KilledOperation& other = OperationNamed(GetParam().other);
        m_known.push_back(m_scene.Run(other, Task::Perform));
        m_scene.Prepare();
        m_known.push_back(m_scene.Run(other, Task::Perform));
        m_known.push_back(m_scene.Run(Task::Perform));
    }

    [[nodiscard]] std::vector<std::size_t> Steps() const { return SettingsCalls(m_calls); }

    // The numbers of the calls at which this test lets the others in.
    [[nodiscard]] std::vector<std::size_t> Tried() const
    {
        const std::vector<std::size_t> all = Steps();
        if (IsThorough())
            return all;
        std::vector<std::size_t> sample;
        for (std::size_t i = 1; i <= encounterSampleSize; ++i)
            sample.push_back(all[all.size() * i / (encounterSampleSize + 1)]);
        return sample;
    }

    void MeetAt(std::size_t call)
    {
        const Encounter& encounter = GetParam();
        SCOPED_TRACE(testing::PrintToString(encounter) + ", before call " + std::to_string(call) + ": " +
                     m_calls[call - 1].function + " " + m_calls[call - 1].place);
        m_scene.Prepare();
        const State left = m_scene.Run(
            Task::Perform, {.call = call, .happening = encounter.happening, .other = encounter.other});
        if (encounter.happening == Happening::AnotherSaves)
            CheckMixed(left);
        else
            CheckUntouched(left);
    }

  private:
    // Each value is one that somebody wrote last, or that nobody touched, and the script has all its lines.
    void CheckMixed(const State& left) const
    {
        std::vector<const Picture*> pictures = {&left.picture};
        for (const State& state : m_known)
            pictures.push_back(&state.picture);
        for (const std::string& item : ItemsOf(pictures)) {
            const std::string now = ContentOf(left.picture, item);
            std::vector<std::string> known;
            for (const State& state : m_known)
                known.push_back(ContentOf(state.picture, item));
            const bool isMix = item.ends_with(disableFlagsValue) && IsMixOfFlags(now, known);
            EXPECT_TRUE(isMix || std::ranges::find(known, now) != known.end()) << item << " is " << now;
        }
        EXPECT_EQ(OtherLines(left.script, m_block), OtherLines(m_script, m_block));
        const std::vector<std::string> lines = LinesOf(left.script);
        for (const std::string& line : m_block)
            EXPECT_LE(std::ranges::count(lines, line), 2) << line;
    }

    // The thread that saves finds the messages when it is done.
    void CheckUntouched(const State& left) const
    {
        const State& whole = m_known.front();
        for (const std::string& item : ItemsOf({&left.picture, &whole.picture}))
            EXPECT_EQ(ContentOf(left.picture, item), ContentOf(whole.picture, item)) << item;
        EXPECT_EQ(left.script, whole.script);
        EXPECT_EQ(m_scene.LastReport().boxes, m_boxes);
    }

    Scene m_scene{OperationNamed(GetParam().operation)};
    std::vector<State> m_known; // first what the operation leaves alone
    std::string m_script;
    std::vector<Call> m_calls;
    std::vector<std::string> m_boxes;
    std::vector<std::string> m_block = LinesOf(BlockOfScript());
};

TEST_P(Others, LoseWhatTheLastWriterOverwroteAndNoMore)
{
    ASSERT_NO_FATAL_FAILURE(RunEachAlone());
    const std::vector<std::size_t> tried = Tried();
    for (const std::size_t call : tried)
        MeetAt(call);
    std::printf("%s and %s: met at %zu of %zu calls\n", GetParam().operation, GetParam().other, tried.size(),
                Steps().size());
}

std::string NameOfEncounter(const testing::TestParamInfo<Encounter>& info)
{
    std::string name = testing::PrintToString(info.param);
    std::erase(name, ' ');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Encounters, Others, testing::ValuesIn(Encounters()), NameOfEncounter);

} // namespace
