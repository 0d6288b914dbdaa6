// Real services of the test's own: the made-up machine's service program under names of the test, gone at the
// end.
#pragma once

#include <string>
#include <vector>
#include <windows.h>

// One service, stopped. It behaves as its settings say ("StartDelay=500", ...; see AgentService.exe).
class RealService
{
  public:
    // Throws std::runtime_error when the service cannot be registered.
    RealService(std::string name, const std::string& displayName, const std::vector<std::string>& settings);
    // Ends the service's process, whatever it is at.
    ~RealService();
    RealService(const RealService&) = delete;
    RealService& operator=(const RealService&) = delete;

    // The state now; 0 when it cannot be read.
    [[nodiscard]] DWORD State() const { return Status().dwCurrentState; }
    // Of its process; 0 when it has none.
    [[nodiscard]] DWORD ProcessId() const { return Status().dwProcessId; }

    // Starts it and returns when it runs. Fails the test when it does not.
    void Start() const;
    // Asks for a pause; the service program obeys at once.
    void Pause() const;
    void Disable() const;

  private:
    [[nodiscard]] SERVICE_STATUS_PROCESS Status() const;

    std::string m_name;
    SC_HANDLE m_manager;
    SC_HANDLE m_service;
};
