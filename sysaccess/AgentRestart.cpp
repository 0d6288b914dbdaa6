// Order and restart of the agents' services; see the header.
#include "sysaccess/AgentRestart.h"

#include "resources/resource.h"
#include "sysaccess/MessageBoxes.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char snmpService[] = "SNMP";
constexpr char hostService[] = "VtMgHost";
constexpr char webAgentService[] = "VtnWebWmi";

// Before each stop and start: what one service gave up, a port or a file, is free for the next. In
// milliseconds.
constexpr DWORD pauseBetweenServices = 1000;

bool IsStoppedRunningOrPaused(DWORD state)
{
    return state == SERVICE_STOPPED || state == SERVICE_RUNNING || state == SERVICE_PAUSED;
}

UINT WhyNotControllable(DWORD hostState)
{
    switch (hostState) {
    case SERVICE_START_PENDING:
    case SERVICE_STOP_PENDING:
    case SERVICE_CONTINUE_PENDING:
    case SERVICE_PAUSE_PENDING:
        return IDS_AGENTS_PENDING;
    default:
        return IDS_AGENTS_UNKNOWN_STATE;
    }
}

bool IsRestartWanted(HWND owner, DWORD hostState)
{
    const UINT question = hostState == SERVICE_STOPPED ? IDS_START_QUESTION : IDS_RESTART_QUESTION;
    return MessageBoxById(owner, question, IDS_APPLET_NAME, MB_YESNO | MB_ICONINFORMATION) == IDYES;
}

} // namespace

AgentServiceChain::AgentServiceChain()
{
    const UniqueServiceHandle manager(OpenSCManagerA(nullptr, nullptr, GENERIC_EXECUTE));
    if (!manager)
        return;
    const auto open = [&](const char* name) {
        return UniqueServiceHandle(OpenServiceA(manager.Get(), name, SERVICE_ALL_ACCESS));
    };
    m_snmp = open(snmpService);
    m_host = open(hostService);
    m_webAgent = open(webAgentService);
    m_hasWebAgent = CanTakePart(m_webAgent.Get());
}

bool AgentServiceChain::CanTakePart(SC_HANDLE webAgent)
{
    const std::optional<DWORD> state = ReadServiceState(webAgent);
    return state.has_value() && IsStoppedRunningOrPaused(*state);
}

void AgentServiceChain::ListServices()
{
    std::vector<std::string> dependents;
    // When there is no list of dependents, SNMP itself is still worth the restart.
    GetDependentServices(snmpService, dependents);
    if (m_hasWebAgent)
        m_services.emplace_back(webAgentService);
    std::ranges::move(dependents, std::back_inserter(m_services));
    m_services.emplace_back(snmpService);
}

void AgentServiceChain::StopAll(HWND owner)
{
    for (const std::string& service : m_services) {
        Sleep(pauseBetweenServices);
        StopServiceWithProgress(owner, service.c_str(), m_pleaseWait);
    }
}

void AgentServiceChain::StartAll(HWND owner)
{
    for (auto service = m_services.rbegin(); service != m_services.rend(); ++service) {
        Sleep(pauseBetweenServices);
        StartServiceWithProgress(owner, service->c_str(), m_pleaseWait);
    }
}

bool CanControlAgents(HWND owner, DWORD hostState)
{
    if (IsStoppedRunningOrPaused(hostState))
        return true;
    MessageBoxById(owner, WhyNotControllable(hostState), IDS_APPLET_NAME, MB_ICONHAND);
    return false;
}

void RestartAgentServices(HWND owner)
{
    AgentServiceChain agents;
    const std::optional<DWORD> hostState = agents.HostState();
    if (!hostState.has_value() || !CanControlAgents(owner, *hostState))
        return;
    if (!IsRestartWanted(owner, *hostState))
        return;
    agents.ListServices();
    if (*hostState != SERVICE_STOPPED)
        agents.StopAll(owner);
    agents.StartAll(owner);
}
