// Switches on the host's command line.
#include "sysaccess/core/CommandLine.h"

#include "imports/ImportHook.h"

#include <gtest/gtest.h>
#include <string>
#include <windows.h>

namespace {

bool Contains(const char* switchText, std::string commandLine)
{
    auto hook = support::HookImport<decltype(GetCommandLineA)>(GetModuleHandleA(nullptr), "GetCommandLineA",
                                                               [&](auto) { return commandLine.data(); });
    return CommandLineContains(switchText);
}

TEST(CommandLine, FindsASwitchInAnyLetterCase)
{
    EXPECT_TRUE(Contains(setupSwitch, "control.exe vtnmgmt.cpl /SETUP"));
    EXPECT_TRUE(Contains(setupSwitch, "control.exe vtnmgmt.cpl /setup"));
    EXPECT_TRUE(Contains(clientSwitch, "control.exe /ClIeNt vtnmgmt.cpl"));
}

TEST(CommandLine, FindsASwitchInsideAnotherWord)
{
    EXPECT_TRUE(Contains(setupSwitch, "control.exe vtnmgmt.cpl,x/setupnow"));
}

TEST(CommandLine, DoesNotFindWhatIsNotThere)
{
    EXPECT_FALSE(Contains(setupSwitch, ""));
    EXPECT_FALSE(Contains(setupSwitch, "control.exe vtnmgmt.cpl SETUP"));
    EXPECT_FALSE(Contains(clientSwitch, "control.exe vtnmgmt.cpl /SETUP"));
}

TEST(CommandLine, LeavesTheProcessItsCommandLine)
{
    std::string commandLine = "control.exe /setup";
    auto hook = support::HookImport<decltype(GetCommandLineA)>(GetModuleHandleA(nullptr), "GetCommandLineA",
                                                               [&](auto) { return commandLine.data(); });
    EXPECT_TRUE(CommandLineContains(setupSwitch));
    EXPECT_EQ(commandLine, "control.exe /setup");
}

} // namespace
