// The Desktop Mgmt page as its run-time class describes it.
#include "desktop/DesktopPage.h"

#include "support/TestRegistry.h"
#include "sysaccess/core/AgentServices.h"

#include <gtest/gtest.h>

namespace {

TEST(ClientPageClass, IsAPageOfItsOwnName)
{
    const support::SavedKey agents(ServiceKey(hostServiceName));
    support::TestKey(hostAgentKey).SetString(clientIniValue, "C:\\scripts\\LOGIN.BAT");
    const CVtnClientPropPage page;
    EXPECT_STREQ(page.GetRuntimeClass()->m_lpszClassName, "CVtnClientPropPage");
    EXPECT_TRUE(page.IsKindOf(RUNTIME_CLASS(CVtnClientPropPage)));
    EXPECT_TRUE(page.IsKindOf(RUNTIME_CLASS(CPropertyPage)));
}

} // namespace
