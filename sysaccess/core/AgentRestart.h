// The agents' services in the order in which they are stopped and started, and the restart that makes changed
// settings take effect. Used by whoever changes settings, and by actions that need the agents out of the way.
#pragma once

#include "sysaccess/core/ServiceQueries.h"
#include "sysaccess/core/ServiceStartStop.h"

#include <optional>
#include <string>
#include <vector>
#include <windows.h>

// Before each stop and start: what one service gave up, a port or a file, is free for the next. In
// milliseconds.
inline constexpr DWORD pauseBetweenServices = 1000;

// What the user sees of a restart, and decides.
class AgentRestartView : public ServiceProgressView
{
  public:
    // The host agent's service is not there, or may not be asked. Nothing follows.
    virtual void OnHostUnknown() = 0;
    // It is neither stopped nor running nor paused, so the agents must be seen to by hand. Nothing follows.
    virtual void OnNotControllable(DWORD hostState) = 0;
    // Whether to go on: to restart the agents, or to start them when the host agent is stopped.
    virtual bool IsRestartWanted(DWORD hostState) = 0;
    // After the last start, while the services are still held open.
    virtual void OnDone() = 0;
};

// The web agent, the services that depend on SNMP, and SNMP. Stopping and starting blocks for the time that
// the services take and a second each.
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

    // First to last. The failure of one does not keep the others; nor does memory that is missing, of which
    // StartAll informs.
    void StopAll(ServiceProgressView& view);
    // Last to first, so that SNMP runs before those that need it. When all have had their turn, throws
    // std::bad_alloc if there was no memory for one of them, here or in StopAll.
    void StartAll(ServiceProgressView& view);

  private:
    [[nodiscard]] static bool CanTakePart(SC_HANDLE webAgent);
    // Takes one service's turn, after the pause.
    template <typename Turn>
    void Take(Turn turn);

    // Open handles keep the three in the service database until the end.
    UniqueServiceHandle m_snmp;
    UniqueServiceHandle m_host;
    UniqueServiceHandle m_webAgent;
    bool m_hasWebAgent = false;
    bool m_lacksMemory = false;
    std::vector<std::string> m_services;
};

// Whether the agents can be stopped or started while their host is in this state: stopped, running or paused.
[[nodiscard]] bool CanControlAgents(DWORD hostState);

// Whether a host agent's service that cannot be controlled is on its way from one state to another.
[[nodiscard]] bool IsPendingState(DWORD hostState);

// Restarts the agents, or starts them when their host is stopped, if the view says that this is wanted.
void RestartAgentServices(AgentRestartView& view);
