// One service of the made-up machine, alive: what the service manager starts, stops and asks.
#pragma once

#include "Behaviour.h"

#include <memory>
#include <mutex>
#include <string>
#include <type_traits>
#include <windows.h>

namespace demo {

struct HandleCloser
{
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

class Service
{
  public:
    // Reads the behaviour of the service of that name.
    explicit Service(std::string name);

    // The service's life, from its start to its stop; called by the thread that the service manager gave it.
    void Run();

  private:
    static DWORD WINAPI OnControl(DWORD control, DWORD eventType, void* eventData, void* context);
    DWORD Control(DWORD control);

    // Stays in the pending state for `delay`, in which the check point advances `steps` times.
    void Pass(DWORD pendingState, DWORD delay, DWORD steps);
    void RunUntilStopped();

    // Reports to the service manager; called by the service's thread and by the one that hands it its
    // controls.
    void Report(DWORD state, DWORD checkPoint = 0, DWORD exitCode = NO_ERROR);

    const std::string m_name;
    const Behaviour m_behaviour;
    const Handle m_stop;                      // event, signalled when the service shall stop
    SERVICE_STATUS_HANDLE m_status = nullptr; // not to be closed
    std::mutex m_reporting;
};

} // namespace demo
