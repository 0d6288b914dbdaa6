// Questions to Windows' service manager about the services of this machine, for the pages and the restart of
// the agents.
#pragma once

#include "sysaccess/core/Handles.h"

#include <optional>
#include <string>
#include <vector>
#include <windows.h>

inline void CloseService(SC_HANDLE handle)
{
    CloseServiceHandle(handle);
}

// A service, or the service manager.
using UniqueServiceHandle = UniqueHandle<SC_HANDLE, CloseService>;

// Opens a service of a manager that is open; null when that is null or refuses.
[[nodiscard]] UniqueServiceHandle OpenServiceOf(const UniqueServiceHandle& manager, const char* serviceName,
                                                DWORD access = SERVICE_ALL_ACCESS);

// Opens a service for every use; null when the manager or the service cannot be opened.
[[nodiscard]] UniqueServiceHandle OpenServiceForControl(const char* serviceName);

// The state of a service, SERVICE_STOPPED to SERVICE_PAUSED. Nothing when it cannot be read, as from a null
// handle.
[[nodiscard]] std::optional<DWORD> ReadServiceState(SC_HANDLE service);

// What the manager has stored of a service, as far as it matters here.
struct ServiceConfig
{
    DWORD startType = SERVICE_DEMAND_START;
    std::string displayName = {};
    std::vector<std::string> dependencies = {};
};

// Reads it; nothing when that fails. Needs the right to query the configuration.
[[nodiscard]] std::optional<ServiceConfig> ReadServiceConfig(SC_HANDLE service);

// True while a service runs, is paused, or is on its way to either; also when the manager cannot be opened,
// since callers then do best to assume that the agents are at work. False when it is stopped or stopping,
// missing, or cannot be read.
[[nodiscard]] bool IsServiceActive(const char* serviceName);

// Lists the services that depend on a service, in any state and in the manager's order. What `names` held is
// gone in every case. False when the manager refuses the list; a service that cannot be opened counts as one
// without dependents.
bool GetDependentServices(const char* serviceName, std::vector<std::string>& names);
