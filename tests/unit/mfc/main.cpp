// The program of the class library's tests: an application object, then GoogleTest.
#include "support/CrashReport.h"
#include "support/Watchdog.h"
#include "TestDialogs.h"

#include <gtest/gtest.h>

// Outlives every test; they set its main window and put it back.
static CTestApp g_application;

int main(int argc, char** argv)
{
    AfxWinInit(GetModuleHandleA(nullptr), nullptr, GetCommandLineA(), SW_SHOW);
    testing::InitGoogleTest(&argc, argv);
    support::ReportCrashes();
    support::WatchTests();
    return RUN_ALL_TESTS();
}
