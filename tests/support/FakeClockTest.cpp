// The turned clock, on this program's own waits.
#include "support/FakeClock.h"

#include <gtest/gtest.h>

namespace {

using support::FakeClock;

// Apart from the hooks, as the hook's header asks.
[[gnu::noinline]] void Rest(DWORD milliseconds)
{
    Sleep(milliseconds);
}

[[gnu::noinline]] DWORD Ticks()
{
    return GetTickCount();
}

TEST(FakeClock, MovesWithEachSleepAndKeepsThem)
{
    const ULONGLONG start = GetTickCount64();
    FakeClock clock(GetModuleHandleA(nullptr), 500);
    EXPECT_EQ(Ticks(), 500U);
    Rest(60000);
    Rest(2500);
    EXPECT_EQ(Ticks(), 63000U);
    clock.Advance(7);
    EXPECT_EQ(Ticks(), 63007U);
    EXPECT_EQ(clock.Sleeps(), (std::vector<DWORD>{60000, 2500}));
    EXPECT_LT(GetTickCount64() - start, 10000U);
}

TEST(FakeClock, WrapsAsTheRealCounterDoes)
{
    const FakeClock clock(GetModuleHandleA(nullptr), 0xFFFFFF00);
    Rest(0x200);
    EXPECT_EQ(Ticks(), 0x100U);
}

TEST(FakeClock, ShowsTheSleeperAtWork)
{
    FakeClock clock(GetModuleHandleA(nullptr), 500);
    std::vector<DWORD> seen;
    clock.OnSleep([&](DWORD milliseconds) { seen = {milliseconds, clock.Now()}; });
    Rest(40);
    EXPECT_EQ(seen, (std::vector<DWORD>{40, 500}));
}

TEST(FakeClock, WritesSleepsIntoALogBesideOtherCalls)
{
    support::CallLog log;
    const FakeClock clock(GetModuleHandleA(nullptr), 0, &log);
    Rest(1);
    log.Add("Other call");
    Rest(2);
    EXPECT_EQ(log.Calls(), (std::vector<std::string>{"Sleep 1", "Other call", "Sleep 2"}));
    EXPECT_EQ(log.CallsOf({"Sleep"}), (std::vector<std::string>{"Sleep 1", "Sleep 2"}));
}

TEST(FakeClock, RefusesAModuleThatNeverLooksAtTheTime)
{
    EXPECT_THROW(FakeClock(GetModuleHandleA("ntdll.dll")), std::runtime_error);
}

} // namespace
