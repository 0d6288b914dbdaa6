// The agents' services in the order in which they are stopped and started, and the restart that makes changed
// settings take effect. Used by the applet's entry, and by actions that need the agents out of the way.
#pragma once

#include "sysaccess/core/ServiceQueries.h"
#include "sysaccess/ServiceStartStop.h"

#include <optional>
#include <string>
#include <vector>
#include <windows.h>

// The web agent, the services that depend on SNMP, and SNMP. Stopping and starting blocks for the time that
// the services take and a second each, shows what it is at, and tells the user of every service that fails.
class AgentServiceChain
{
  public:
    // Opens the services that decide and finds out whether the web agent takes part; stops and starts
    // nothing.
    AgentServiceChain();

    // The state of the host agent's service; nothing when it cannot be read.
    [[nodiscard]] std::optional<DWORD> HostState() const { return ReadServiceState(m_host.Get()); }

    // Finds out which services there are. Until then there are none to stop and start.
    void ListServices();

    // First to last. The failure of one does not keep the others.
    void StopAll(HWND owner);
    // Last to first, so that SNMP runs before those that need it.
    void StartAll(HWND owner);

  private:
    [[nodiscard]] static bool CanTakePart(SC_HANDLE webAgent);

    // Open handles keep the three in the service database until the end.
    UniqueServiceHandle m_snmp;
    UniqueServiceHandle m_host;
    UniqueServiceHandle m_webAgent;
    bool m_hasWebAgent = false;
    std::vector<std::string> m_services;
    PleaseWaitSlot m_pleaseWait; // the last member: gone from the screen before the handles are closed
};

// Whether the agents can be stopped or started while their host is in this state: stopped, running or paused.
// Otherwise tells the user that they must be seen to by hand.
[[nodiscard]] bool CanControlAgents(HWND owner, DWORD hostState);

// Asks whether to restart the agents, or to start them when their host is stopped, and does it. Says nothing
// when the host agent is not installed.
void RestartAgentServices(HWND owner);
