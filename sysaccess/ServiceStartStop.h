// The starts and stops of services as the user of the applet sees them: a please-wait dialog, and message
// boxes for what does not work. Used by the restart of the agents and by what must not happen while they run.
#pragma once

#include "sysaccess/core/AgentRestart.h"
#include "sysaccess/PleaseWaitDlg.h"

#include <string>
#include <windows.h>

// Shows one procedure above `owner`, which may be null. `pleaseWait` gets its dialog from the first start or
// stop; it is the caller's, and destroyed by them, unless the procedure reports its end.
class ServiceDialogs : public AgentRestartView
{
  public:
    ServiceDialogs(HWND owner, PleaseWaitSlot& pleaseWait) : m_owner(owner), m_pleaseWait(pleaseWait) {}

    void OnStarting(const std::string& displayName) override;
    void OnStopping(const std::string& displayName) override;
    void OnWaiting() override;
    void OnStartFailed(const std::string& displayName) override;
    void OnStopFailed(const std::string& displayName) override;

    // Says nothing: the host agent is not installed.
    void OnHostUnknown() override {}
    void OnNotControllable(DWORD hostState) override;
    bool IsRestartWanted(DWORD hostState) override;
    void OnDone() override { m_pleaseWait.reset(); }

  private:
    HWND m_owner;
    PleaseWaitSlot& m_pleaseWait;
    HWND m_repainted = nullptr; // in each round of a wait
};

// Waits for a service as its namesake of the core does. Each round repaints `window`, which may be null.
[[nodiscard]] bool WaitForServiceState(HWND window, SC_HANDLE service, SERVICE_STATUS& status,
                                       DWORD wantedState);

// Each starts or stops a service as its namesake of the core does, in ServiceDialogs.
bool StartServiceWithProgress(HWND owner, const char* serviceName, PleaseWaitSlot& pleaseWait);
bool StopServiceWithProgress(HWND owner, const char* serviceName, PleaseWaitSlot& pleaseWait);
