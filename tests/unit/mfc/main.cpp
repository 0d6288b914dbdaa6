// The program of the class library's tests: an application object, then GoogleTest.
#include "support/Watchdog.h"
#include "TestDialogs.h"

#include <chrono>
#include <gtest/gtest.h>

// Outlives every test; they set its main window and put it back.
static CTestApp g_application;

int main(int argc, char** argv)
{
    AfxWinInit(GetModuleHandleA(nullptr), nullptr, GetCommandLineA(), SW_SHOW);
    testing::InitGoogleTest(&argc, argv);
    // The loops that they test run on this thread: one that does not end ends no test.
    support::WatchTests(std::chrono::seconds(30));
    return RUN_ALL_TESTS();
}
