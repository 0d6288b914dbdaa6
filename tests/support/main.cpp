// GoogleTest's program, whose end always has a reason that can be read.
#include "support/CrashReport.h"
#include "support/Watchdog.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    support::ReportCrashes();
    support::WatchTests();
    return RUN_ALL_TESTS();
}
