// Starts and stops one service while the user sees which one, and tells when it does not work. Used by the
// restart of the agents and by what must not happen while they run. Everything here blocks its thread.
#pragma once

#include "sysaccess/PleaseWaitDlg.h"

#include <windows.h>

// Waits for a service to be SERVICE_RUNNING or SERVICE_STOPPED, as `wantedState` says; any other is not
// waited for. `status` is the last one known and becomes the last one seen. Waits only through the pending
// state on the way and for as long as the service's wait hint and check points allow. Each round repaints
// `window`, which may be null. True when the state is reached.
[[nodiscard]] bool WaitForServiceState(HWND window, SC_HANDLE service, SERVICE_STATUS& status,
                                       DWORD wantedState);

// Starts a stopped service, unless it is disabled. `pleaseWait` gets its dialog from the first service of a
// procedure that needs it; it is the caller's, and destroyed by them. False when the service could not be
// started, which the user has been told, or its state not be read. A service that is not there, or that is
// not stopped, is none to start: true.
bool StartServiceWithProgress(HWND owner, const char* serviceName, PleaseWaitSlot& pleaseWait);

// Stops a running or paused service, in the same way.
bool StopServiceWithProgress(HWND owner, const char* serviceName, PleaseWaitSlot& pleaseWait);
