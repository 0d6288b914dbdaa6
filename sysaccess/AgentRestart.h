// The restart of the agents that the applet offers its user.
#pragma once

#include "sysaccess/core/AgentRestart.h"
#include "sysaccess/ServiceStartStop.h"

#include <windows.h>

// Whether the agents can be stopped or started while their host is in this state. Otherwise informs the user
// that they must be seen to by hand.
[[nodiscard]] bool CanControlAgents(HWND owner, DWORD hostState);

// Asks whether to restart the agents, or to start them when their host is stopped, and does it. Says nothing
// when the host agent is not installed.
void RestartAgentServices(HWND owner);
