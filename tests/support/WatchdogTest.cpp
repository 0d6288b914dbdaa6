// A test that hangs ends its program, with its name.
#include "support/Watchdog.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

using namespace std::chrono_literals;

void HangUnderWatch()
{
    const support::Watchdog watchdog("Sheet.NeverEnds", 10ms);
    WaitForSingleObject(GetCurrentProcess(), INFINITE);
}

TEST(Watchdog, EndsTheProgramOfATestThatHangs)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(HangUnderWatch(), testing::ExitedWithCode(3), "Sheet.NeverEnds hangs");
}

TEST(Watchdog, LeavesATestAloneThatEndsInTime)
{
    const support::Watchdog watchdog("Sheet.Ends", 1h);
}

} // namespace
