// The sheet opened, looked through and closed again and again in one process: it must not hold more of
// anything at the end. 20 times each time; 10,000 times with VTN_THOROUGH in the environment.
#include "machine/SweepMachine.h"
#include "support/ModuleMemory.h"
#include "support/ResourceCount.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

// It needs windows.h before it.
#include <psapi.h>

namespace {

using namespace sweep;
using support::ModuleMemory;
using support::ResourceCount;

// Libraries, classes, brushes and pools come with the first rounds, and stay.
constexpr int warmUpRounds = 5;
constexpr int reportInterval = 1000; // rounds between two lines of output
int RoundCount()
{
    return std::getenv("VTN_THOROUGH") != nullptr ? 10000 : 20;
}

// Bytes by which the process may grow: Wine keeps more than one KB of its own with each sheet, and takes
// memory in larger pieces. Windows is expected to stay below that.
constexpr std::size_t AllowedGrowth(int rounds)
{
    return 256 * 1024 + static_cast<std::size_t>(rounds) * 2048;
}

// Bytes that the process has to itself. Windows reports them twice, Wine in this place alone; there it moves
// in steps of pages.
std::size_t PrivateBytes()
{
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

class LongRun : public testing::Test
{
  protected:
    // Visits every page; OK and Cancel take turns.
    void OpenAndClose(int round)
    {
        support::AppletHost& host = m_subject.host;
        host.Open();
        for (const std::string& tab : host.Tabs())
            host.Page(tab);
        m_mostHeld = std::max(m_mostHeld, m_memory.Held());
        if (round % 2 == 0)
            host.PressOk();
        else
            host.PressCancel();
    }

    Subject m_subject;
    ModuleMemory m_memory{m_subject.host.Module()};
    Settings m_settings{m_subject};
    CallRecorder m_recorder;
    StandIns m_standIns{m_subject.host.Module(), m_settings, m_recorder};
    std::size_t m_mostHeld = 0; // blocks, while the sheet is open
};

TEST_F(LongRun, LeavesNothingBehind)
{
    const int rounds = RoundCount();
    for (int round = 0; round < warmUpRounds; ++round)
        OpenAndClose(round);
    // The job of the last opening holds handles until its thread has put it away.
    m_subject.host.Thread().Settle();
    const ResourceCount before = ResourceCount::Now();
    const std::size_t blocksBefore = m_memory.Held();
    const std::size_t bytesBefore = PrivateBytes();
    for (int round = 0; round < rounds; ++round) {
        OpenAndClose(round);
        if ((round + 1) % reportInterval == 0) {
            std::printf("opened %d times\n", round + 1);
            std::fflush(stdout);
        }
    }
    m_subject.host.Thread().Settle();
    const std::size_t bytesAfter = PrivateBytes();
    support::ExpectNoLeak(before);
    EXPECT_GT(bytesBefore, 0U);
    EXPECT_LE(bytesAfter, bytesBefore + AllowedGrowth(rounds));
    EXPECT_GT(m_mostHeld, blocksBefore); // the count sees what is taken
    EXPECT_LE(m_memory.Held(), blocksBefore);
    std::printf("rounds: %d; blocks of memory: %zu before, %zu while open, %zu after\n", rounds, blocksBefore,
                m_mostHeld, m_memory.Held());
    std::printf("private memory: %zu KB before, %zu KB after\n", bytesBefore / 1024, bytesAfter / 1024);
}

} // namespace
