// A machine whose services, clock and user do what the test says, with one log of all that happens on it.
#pragma once

#include "support/CallLog.h"
#include "support/FakeClock.h"
#include "support/MessageBoxScript.h"
#include "support/ServiceScript.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <windows.h>

using Calls = std::vector<std::string>;
using States = std::vector<DWORD>;

class ScriptedMachine : public testing::Test
{
  protected:
    // Whatever happened, every handle of the manager and of a service must have been closed.
    void TearDown() override { EXPECT_EQ(m_manager.OpenHandles(), 0); }

    // A service in one state that does not change by itself.
    void AddInState(const std::string& name, DWORD state)
    {
        m_manager.Add(name, {.displayName = name + " display", .states = {support::ServiceState(state)}});
    }

    // The pauses and what was asked of the services, in their order.
    [[nodiscard]] Calls Actions() const
    {
        return m_log.CallsOf({"Sleep", "StartServiceA", "ControlService", "MessageBoxA"});
    }

    support::CallLog m_log;
    support::ServiceScript m_manager{GetModuleHandleA(nullptr), &m_log};
    support::FakeClock m_clock{GetModuleHandleA(nullptr), 1000, &m_log};
    support::MessageBoxScript m_user{GetModuleHandleA(nullptr), &m_log};
};
