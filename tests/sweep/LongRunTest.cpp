// The sheet opened, looked through and closed again and again in one process: it must not hold more of
// anything at the end. 20 times each time; 1,000 times with VTN_THOROUGH in the environment.
#include "support/ResourceCount.h"
#include "sweep/SweepMachine.h"

#include <cstdio>

namespace {

using namespace sweep;
using support::ResourceCount;

// Libraries, classes, brushes and pools come with the first rounds, and stay.
constexpr int warmUpRounds = 5;
// A heap is handed out and taken back in blocks; what leaks in each round is more than this at the end.
constexpr std::size_t heapSlack = 0x4000;

int RoundCount()
{
    return std::getenv("VTN_THOROUGH") != nullptr ? 1000 : 20;
}

std::size_t BytesInUse(HANDLE heap)
{
    std::size_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry) != FALSE) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
            bytes += entry.cbData + entry.cbOverhead;
    }
    HeapUnlock(heap);
    return bytes;
}

// In all heaps of the process. Wine's own answer for private memory is that of the whole address space.
std::size_t BytesInUse()
{
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(heaps.size(), heaps.data());
    std::size_t bytes = 0;
    for (DWORD i = 0; i < std::min<DWORD>(count, heaps.size()); ++i)
        bytes += BytesInUse(heaps[i]);
    return bytes;
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
        if (round % 2 == 0)
            host.PressOk();
        else
            host.PressCancel();
    }

    Subject m_subject;
    Settings m_settings{m_subject};
    CallRecorder m_recorder;
    StandIns m_standIns{m_subject.host.Module(), m_settings, m_recorder};
};

TEST_F(LongRun, LeavesNoMoreBehindAtTheEndThanAtTheStart)
{
    const int rounds = RoundCount();
    for (int round = 0; round < warmUpRounds; ++round)
        OpenAndClose(round);
    const ResourceCount before = ResourceCount::Now();
    const std::size_t bytesBefore = BytesInUse();
    for (int round = 0; round < rounds; ++round)
        OpenAndClose(round);
    const std::size_t bytesAfter = BytesInUse();
    support::ExpectNoLeak(before);
    EXPECT_LE(bytesAfter, bytesBefore + heapSlack);
    std::printf("rounds: %d, heap bytes %zu before, %zu after\n", rounds, bytesBefore, bytesAfter);
}

} // namespace
