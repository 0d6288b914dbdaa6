// A test that crashes is named, with the place.
#include "support/CrashReport.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

TEST(CrashReport, NamesExceptionPlaceAndTest)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto accessViolation = static_cast<int>(STATUS_ACCESS_VIOLATION);
    EXPECT_EXIT(RaiseException(STATUS_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr),
                testing::ExitedWithCode(accessViolation),
                "crashed in CrashReport.NamesExceptionPlaceAndTest: exception 0xc0000005 at .*\\+0x");
}

} // namespace
