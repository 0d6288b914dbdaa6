// The restart decision: what each page's change, alone and with others, leads to.
#include "applet/RestartDecision.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <initializer_list>

namespace {

constexpr bool operator==(const RestartDecision& left, const RestartDecision& right)
{
    return left.restartAgents == right.restartAgents && left.rebootNotice == right.rebootNotice;
}

// The decision after just these pages were changed.
RestartDecision DecideAfter(std::initializer_list<PageRole> changed)
{
    return DecideRestart([&](PageRole role) { return std::ranges::find(changed, role) != changed.end(); });
}

constexpr RestartDecision nothing{};
constexpr RestartDecision restart{.restartAgents = true, .rebootNotice = false};
constexpr RestartDecision restartAndReboot{.restartAgents = true, .rebootNotice = true};

TEST(RestartDecision, NothingChangedNeedsNothing)
{
    EXPECT_TRUE(DecideAfter({}) == nothing);
}

TEST(RestartDecision, EachAgentPageAloneNeedsARestart)
{
    EXPECT_TRUE(DecideAfter({PageRole::Services}) == restart);
    EXPECT_TRUE(DecideAfter({PageRole::Storage}) == restart);
    EXPECT_TRUE(DecideAfter({PageRole::Snmp}) == restart);
    EXPECT_TRUE(DecideAfter({PageRole::ProcessMonitor}) == restart);
}

TEST(RestartDecision, DesktopMgmtNeedsARebootToo)
{
    EXPECT_TRUE(DecideAfter({PageRole::Desktop}) == restartAndReboot);
    EXPECT_TRUE(DecideAfter({PageRole::Storage, PageRole::Desktop}) == restartAndReboot);
}

TEST(RestartDecision, TheBoardNeedsARestartButNoReboot)
{
    EXPECT_TRUE(DecideAfter({PageRole::Board}) == restart);
    EXPECT_TRUE(DecideAfter({PageRole::Desktop, PageRole::Board}) == restartAndReboot);
}

} // namespace
