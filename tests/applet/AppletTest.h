// The built applet, loaded on a member server with its agents and without a board.
#pragma once

#include "machine/TestMachine.h"
#include "support/AppletHost.h"
#include "support/HelpRecorder.h"
#include "support/MessageBoxScript.h"
#include "sysaccess/core/AgentServices.h"

#include <gtest/gtest.h>
#include <string>

inline constexpr char restartQuestion[] = "The Management Agents configuration has been changed.\n\n"
                                          "Would you like to restart the Management Agents now?";

inline constexpr char accessDenied[] =
    "You do not have access to change the configuration of the Management Agents.";

// The applet, loaded and initialised, with somebody to answer its message boxes.
class AppletTest : public testing::Test
{
  protected:
    // Presses Tab until the control has the focus; false when it never gets it.
    [[nodiscard]] bool TabTo(HWND control) const
    {
        constexpr int presses = 30; // more than a page and the sheet have controls
        for (int press = 0; press < presses && m_host.Thread().Focus() != control; ++press)
            m_host.PressKey(VK_TAB);
        return m_host.Thread().Focus() == control;
    }

    TestMachine m_machine;
    support::AppletHost m_host{appletPath};
    support::MessageBoxScript m_boxes{m_host.Module()};
};
