// A test that hangs ends its program, with its name.
#include "support/Watchdog.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

void HangUnderWatch()
{
    support::Watchdog watchdog(10ms);
    watchdog.Begin("Sheet.NeverEnds");
    WaitForSingleObject(GetCurrentProcess(), INFINITE);
}

TEST(Watchdog, EndsTheProgramOfATestThatHangs)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(HangUnderWatch(), testing::ExitedWithCode(3), "Sheet.NeverEnds hangs");
}

TEST(Watchdog, LeavesATestAloneThatEndsInTime)
{
    support::Watchdog watchdog(1h);
    watchdog.Begin("Sheet.Ends");
    Sleep(20);
}

TEST(Watchdog, LeavesAProgramAloneBetweenTests)
{
    support::Watchdog watchdog(10ms);
    watchdog.Begin("Sheet.Ends");
    watchdog.End();
    Sleep(100);
}

} // namespace
