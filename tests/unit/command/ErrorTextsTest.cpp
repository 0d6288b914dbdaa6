// The applet's messages as the program prints them, from the program's own resources.
#include "command/ErrorTexts.h"
#include "resources/resource.h"
#include "sysaccess/core/Texts.h"

#include <gtest/gtest.h>

namespace {

TEST(ErrorTexts, AreTheMessagesInOneLine)
{
    EXPECT_EQ(ErrorText(IDS_AGENTS_PENDING),
              "The Management Agents service is in a pending state. Use the Services applet in the Control "
              "Panel to control the Management Agents.");
    EXPECT_EQ(ErrorText(IDS_ACCESS_DENIED),
              "You do not have access to change the configuration of the Management Agents.");
}

TEST(ErrorTexts, HaveTheFirstAndTheLastOfABlock)
{
    static_assert(IDS_RESTART_QUESTION % 16 == 15 && IDS_START_QUESTION % 16 == 0);
    const std::string changed = "The Management Agents configuration has been changed. ";
    EXPECT_EQ(ErrorText(IDS_RESTART_QUESTION),
              changed + "Would you like to restart the Management Agents now?");
    EXPECT_EQ(ErrorText(IDS_START_QUESTION), changed + "Would you like to start the Management Agents now?");
}

TEST(ErrorTexts, NameTheService)
{
    EXPECT_EQ(
        ServiceErrorText(IDS_CANNOT_STOP, "Web\xE9"),
        "Could not stop the Web\xC3\xA9 service. Use the Services applet in the Control Panel to control "
        "the service.");
    EXPECT_EQ(ServiceErrorText(IDS_ACCESS_DENIED, "Web\xE9"),
              "You do not have access to change the configuration of the Management Agents. (Web\xC3\xA9)");
}

TEST(ErrorTexts, AreNumbersWhereThereIsNoText)
{
    for (const UINT absent : {15U, 32'000U}) {
        EXPECT_EQ(ProgramText(absent), "");
        EXPECT_EQ(ErrorText(absent), "error " + std::to_string(absent));
    }
}

} // namespace
