// The life of a service: starting, running, stopping, each as slowly or as badly as its key says.
#include "Service.h"

#include <utility>

namespace demo {

namespace {

// What a running or paused service accepts; nothing while it starts or stops.
DWORD ControlsAccepted(DWORD state)
{
    const bool settled = state == SERVICE_RUNNING || state == SERVICE_PAUSED;
    return settled ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_PAUSE_CONTINUE : 0;
}

// Whoever waits for the mutex looks among its own session's names or among the machine's, so it stands in
// both.
std::pair<Handle, Handle> MakeReadyMutex(const std::string& name)
{
    if (name.empty())
        return {};
    return {Handle(CreateMutexA(nullptr, FALSE, name.c_str())),
            Handle(CreateMutexA(nullptr, FALSE, ("Global\\" + name).c_str()))};
}

} // namespace

Service::Service(std::string name)
    : m_name(std::move(name)), m_behaviour(LoadBehaviour(m_name)),
      m_stop(CreateEventA(nullptr, TRUE, FALSE, nullptr))
{
}

void Service::Run()
{
    m_status = RegisterServiceCtrlHandlerExA(m_name.c_str(), &OnControl, this);
    if (m_status == nullptr)
        return;
    Pass(SERVICE_START_PENDING, m_behaviour.startDelay, m_behaviour.startSteps);
    if (m_behaviour.startError != NO_ERROR)
        return Report(SERVICE_STOPPED, 0, m_behaviour.startError);
    RunUntilStopped();
    Pass(SERVICE_STOP_PENDING, m_behaviour.stopDelay, m_behaviour.stopSteps);
    Report(SERVICE_STOPPED);
}

void Service::RunUntilStopped()
{
    const auto ready = MakeReadyMutex(m_behaviour.readyMutex);
    Report(SERVICE_RUNNING);
    WaitForSingleObject(m_stop.get(), m_behaviour.runTime == 0 ? INFINITE : m_behaviour.runTime);
}

DWORD WINAPI Service::OnControl(DWORD control, DWORD, void*, void* context)
{
    return static_cast<Service*>(context)->Control(control);
}

DWORD Service::Control(DWORD control)
{
    switch (control) {
    case SERVICE_CONTROL_STOP:
        // Before the answer: who asked looks at the state at once, and must find the stop begun.
        Report(SERVICE_STOP_PENDING, 1);
        SetEvent(m_stop.get());
        return NO_ERROR;
    case SERVICE_CONTROL_PAUSE:
        Report(SERVICE_PAUSED);
        return NO_ERROR;
    case SERVICE_CONTROL_CONTINUE:
        Report(SERVICE_RUNNING);
        return NO_ERROR;
    case SERVICE_CONTROL_INTERROGATE:
        return NO_ERROR;
    default:
        return ERROR_CALL_NOT_IMPLEMENTED;
    }
}

void Service::Pass(DWORD pendingState, DWORD delay, DWORD steps)
{
    const DWORD slices = delay == INFINITE ? 1 : steps + 1;
    const DWORD slice = delay / slices;
    for (DWORD checkPoint = 1; checkPoint <= slices; ++checkPoint) {
        Report(pendingState, checkPoint);
        Sleep(slice);
    }
}

void Service::Report(DWORD state, DWORD checkPoint, DWORD exitCode)
{
    const std::lock_guard lock(m_reporting);
    SERVICE_STATUS status{};
    status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
    status.dwCurrentState = state;
    status.dwControlsAccepted = ControlsAccepted(state);
    status.dwWin32ExitCode = exitCode;
    status.dwCheckPoint = checkPoint;
    status.dwWaitHint = checkPoint == 0 ? 0 : m_behaviour.waitHint;
    SetServiceStatus(m_status, &status);
}

} // namespace demo
