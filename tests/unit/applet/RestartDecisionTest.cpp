// The restart decision: what each page's change, alone and with others, leads to.
#include "applet/RestartDecision.h"

#include <gtest/gtest.h>

namespace {

constexpr bool operator==(const RestartDecision& left, const RestartDecision& right)
{
    return left.restartAgents == right.restartAgents && left.rebootNotice == right.rebootNotice;
}

constexpr RestartDecision nothing{};
constexpr RestartDecision restart{.restartAgents = true, .rebootNotice = false};
constexpr RestartDecision restartAndReboot{.restartAgents = true, .rebootNotice = true};

TEST(RestartDecision, NothingChangedNeedsNothing)
{
    EXPECT_TRUE(DecideRestart({}) == nothing);
}

TEST(RestartDecision, EachAgentPageAloneNeedsARestart)
{
    EXPECT_TRUE(DecideRestart({.services = true}) == restart);
    EXPECT_TRUE(DecideRestart({.storage = true}) == restart);
    EXPECT_TRUE(DecideRestart({.snmpSettings = true}) == restart);
    EXPECT_TRUE(DecideRestart({.processMonitor = true}) == restart);
}

TEST(RestartDecision, DesktopMgmtNeedsARebootToo)
{
    EXPECT_TRUE(DecideRestart({.desktopMgmt = true}) == restartAndReboot);
    EXPECT_TRUE(DecideRestart({.storage = true, .desktopMgmt = true}) == restartAndReboot);
}

TEST(RestartDecision, TheBoardNeedsARestartButNoReboot)
{
    EXPECT_TRUE(DecideRestart({.remoteLumora = true}) == restart);
    EXPECT_TRUE(DecideRestart({.desktopMgmt = true, .remoteLumora = true}) == restartAndReboot);
}

} // namespace
