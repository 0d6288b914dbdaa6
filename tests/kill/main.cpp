// The tests of killed processes; or, with --perform FILE, the process that is killed.
#include "kill/KilledProcess.h"
#include "support/CrashReport.h"
#include "support/Watchdog.h"

#include <gtest/gtest.h>
#include <string_view>

int main(int argc, char** argv)
{
    if (argc == 3 && std::string_view(argv[1]) == "--perform")
        return sweep::RunAsChild(argv[2]);
    testing::InitGoogleTest(&argc, argv);
    support::ReportCrashes();
    support::WatchTests();
    return RUN_ALL_TESTS();
}
