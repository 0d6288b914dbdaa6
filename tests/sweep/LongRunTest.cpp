// The sheet opened, looked through and closed again and again in one process: it must not hold more of
// anything at the end. 20 times each time; 1,000 times with VTN_THOROUGH in the environment.
#include "support/ResourceCount.h"
#include "sweep/SweepMachine.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <set>

// It needs windows.h before it.
#include <psapi.h>

namespace {

using namespace sweep;
using support::ResourceCount;

// Libraries, classes, brushes and pools come with the first rounds, and stay.
constexpr int warmUpRounds = 5;
int RoundCount()
{
    return std::getenv("VTN_THOROUGH") != nullptr ? 1000 : 20;
}

// Bytes by which the process may grow: Wine keeps more than one KB of its own with each sheet, and takes
// memory in larger pieces. Windows is expected to stay below that.
constexpr std::size_t AllowedGrowth(int rounds)
{
    return 256 * 1024 + static_cast<std::size_t>(rounds) * 2048;
}

// Bytes that the process has to itself. Windows tells them twice, Wine in this place alone; there it moves in
// steps of pages.
std::size_t PrivateBytes()
{
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

// The blocks of memory that one module has taken from the C runtime and not given back. The heaps of the
// process tell less: Wine's own controls leave something in them with each sheet that is closed.
class BlockCount
{
  public:
    explicit BlockCount(HMODULE module)
        : m_turn(this), m_malloc(module, "malloc", &Malloc), m_calloc(module, "calloc", &Calloc),
          m_realloc(module, "realloc", &Realloc), m_strdup(module, "_strdup", &Strdup),
          m_free(module, "free", &Free)
    {
        if (!m_malloc.IsImported() || !m_free.IsImported())
            throw std::runtime_error("not imported: malloc, free");
    }

    [[nodiscard]] std::size_t Held() const
    {
        const std::lock_guard lock(m_mutex);
        return m_blocks.size();
    }

  private:
    static BlockCount& Self() { return support::Turn<BlockCount>::Active(); }

    void* Take(void* block)
    {
        const std::lock_guard lock(m_mutex);
        if (block != nullptr)
            m_blocks.insert(block);
        return block;
    }
    // Also of blocks that others took.
    void Give(void* block)
    {
        const std::lock_guard lock(m_mutex);
        m_blocks.erase(block);
    }

    static void* Malloc(std::size_t size) { return Self().Take(std::malloc(size)); }
    static void* Calloc(std::size_t count, std::size_t size) { return Self().Take(std::calloc(count, size)); }
    static void* Realloc(void* block, std::size_t size)
    {
        Self().Give(block);
        return Self().Take(std::realloc(block, size));
    }
    static char* Strdup(const char* text) { return static_cast<char*>(Self().Take(_strdup(text))); }
    static void Free(void* block)
    {
        Self().Give(block);
        std::free(block);
    }

    mutable std::mutex m_mutex;
    std::set<void*> m_blocks;
    support::Turn<BlockCount> m_turn;
    support::ReplacedImport m_malloc;
    support::ReplacedImport m_calloc;
    support::ReplacedImport m_realloc;
    support::ReplacedImport m_strdup;
    support::ReplacedImport m_free;
};

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
        m_mostHeld = std::max(m_mostHeld, m_blocks.Held());
        if (round % 2 == 0)
            host.PressOk();
        else
            host.PressCancel();
    }

    Subject m_subject;
    BlockCount m_blocks{m_subject.host.Module()};
    Settings m_settings{m_subject};
    CallRecorder m_recorder;
    StandIns m_standIns{m_subject.host.Module(), m_settings, m_recorder};
    std::size_t m_mostHeld = 0; // blocks, while the sheet is open
};

TEST_F(LongRun, LeavesNoMoreBehindAtTheEndThanAtTheStart)
{
    const int rounds = RoundCount();
    for (int round = 0; round < warmUpRounds; ++round)
        OpenAndClose(round);
    ResourceCount before = ResourceCount::Now();
    before.kernelHandles += rounds / 100; // one that Windows keeps for itself now and then is no growth
    const std::size_t blocksBefore = m_blocks.Held();
    const std::size_t bytesBefore = PrivateBytes();
    for (int round = 0; round < rounds; ++round)
        OpenAndClose(round);
    const std::size_t bytesAfter = PrivateBytes();
    support::ExpectNoLeak(before);
    EXPECT_GT(bytesBefore, 0U);
    EXPECT_LE(bytesAfter, bytesBefore + AllowedGrowth(rounds));
    EXPECT_GT(m_mostHeld, blocksBefore); // the count sees what is taken
    EXPECT_LE(m_blocks.Held(), blocksBefore);
    std::printf("rounds: %d; blocks of memory: %zu before, %zu while open, %zu after\n", rounds, blocksBefore,
                m_mostHeld, m_blocks.Held());
    std::printf("private memory: %zu KB before, %zu KB after\n", bytesBefore / 1024, bytesAfter / 1024);
}

} // namespace
