// Order and restart of the agents' services; see the header.
#include "sysaccess/core/AgentRestart.h"

#include "sysaccess/core/AgentNames.h"

#include <algorithm>
#include <iterator>
#include <new>

AgentServiceChain::AgentServiceChain()
{
    const UniqueServiceHandle manager(OpenSCManagerA(nullptr, nullptr, GENERIC_EXECUTE));
    if (!manager)
        return;
    const auto open = [&](const char* name) {
        return UniqueServiceHandle(OpenServiceA(manager.Get(), name, SERVICE_ALL_ACCESS));
    };
    m_snmp = open(snmpServiceName);
    m_host = open(hostServiceName);
    m_webAgent = open(webAgentServiceName);
    m_hasWebAgent = CanTakePart(m_webAgent.Get());
}

bool AgentServiceChain::CanTakePart(SC_HANDLE webAgent)
{
    const std::optional<DWORD> state = ReadServiceState(webAgent);
    return state.has_value() && CanControlAgents(*state);
}

void AgentServiceChain::ListServices()
{
    std::vector<std::string> dependents;
    // When there is no list of dependents, SNMP itself is still worth the restart.
    GetDependentServices(snmpServiceName, dependents);
    if (m_hasWebAgent)
        m_services.emplace_back(webAgentServiceName);
    std::ranges::move(dependents, std::back_inserter(m_services));
    m_services.emplace_back(snmpServiceName);
}

// Services that were stopped must be started again, whatever happens to one of them.
template <typename Turn>
void AgentServiceChain::Take(Turn turn)
try {
    Sleep(pauseBetweenServices);
    turn();
} catch (const std::bad_alloc&) {
    m_lacksMemory = true;
}

void AgentServiceChain::StopAll(ServiceProgressView& view)
{
    for (const std::string& service : m_services)
        Take([&] { StopServiceWithProgress(service.c_str(), view); });
}

void AgentServiceChain::StartAll(ServiceProgressView& view)
{
    for (auto service = m_services.rbegin(); service != m_services.rend(); ++service)
        Take([&] { StartServiceWithProgress(service->c_str(), view); });
    if (m_lacksMemory)
        throw std::bad_alloc();
}

bool CanControlAgents(DWORD hostState)
{
    return hostState == SERVICE_STOPPED || hostState == SERVICE_RUNNING || hostState == SERVICE_PAUSED;
}

bool IsPendingState(DWORD hostState)
{
    return hostState == SERVICE_START_PENDING || hostState == SERVICE_STOP_PENDING ||
           hostState == SERVICE_CONTINUE_PENDING || hostState == SERVICE_PAUSE_PENDING;
}

void RestartAgentServices(AgentRestartView& view)
{
    AgentServiceChain agents;
    const std::optional<DWORD> hostState = agents.HostState();
    if (!hostState.has_value())
        return view.OnHostUnknown();
    if (!CanControlAgents(*hostState))
        return view.OnNotControllable(*hostState);
    if (!view.IsRestartWanted(*hostState))
        return;
    agents.ListServices();
    if (*hostState != SERVICE_STOPPED)
        agents.StopAll(view);
    agents.StartAll(view);
    view.OnDone();
}
