// Starting and stopping services; see the header.
#include "sysaccess/core/ServiceStartStop.h"

#include "sysaccess/core/ServiceQueries.h"
#include "sysaccess/core/ServiceWait.h"

namespace {

// A configuration that cannot be read keeps no service from being started or stopped; its plain name is shown
// then.
ServiceConfig ConfigToShow(SC_HANDLE service, const char* serviceName)
{
    ServiceConfig config = ReadServiceConfig(service).value_or(ServiceConfig{.displayName = serviceName});
    // The texts say "service" themselves.
    if (config.displayName.find("SNMP Service") != std::string::npos)
        config.displayName = "SNMP";
    return config;
}

bool StartAndWait(SC_HANDLE service, SERVICE_STATUS& status, ServiceProgressView& view)
{
    if (!StartServiceA(service, 0, nullptr))
        return GetLastError() == ERROR_SERVICE_ALREADY_RUNNING;
    return WaitForServiceState(service, status, SERVICE_RUNNING, [&] { view.OnWaiting(); });
}

bool StopAndWait(SC_HANDLE service, SERVICE_STATUS& status, ServiceProgressView& view)
{
    return ControlService(service, SERVICE_CONTROL_STOP, &status) &&
           WaitForServiceState(service, status, SERVICE_STOPPED, [&] { view.OnWaiting(); });
}

} // namespace

bool StartServiceWithProgress(const char* serviceName, ServiceProgressView& view)
{
    const UniqueServiceHandle service = OpenServiceForControl(serviceName);
    if (!service)
        return true;
    SERVICE_STATUS status{};
    if (!QueryServiceStatus(service.Get(), &status))
        return false;
    if (status.dwCurrentState != SERVICE_STOPPED)
        return true;
    const ServiceConfig config = ConfigToShow(service.Get(), serviceName);
    if (config.startType == SERVICE_DISABLED)
        return true;
    view.OnStarting(config.displayName);
    if (StartAndWait(service.Get(), status, view))
        return true;
    view.OnStartFailed(config.displayName);
    return false;
}

bool StopServiceWithProgress(const char* serviceName, ServiceProgressView& view)
{
    const UniqueServiceHandle service = OpenServiceForControl(serviceName);
    if (!service)
        return true;
    SERVICE_STATUS status{};
    if (!QueryServiceStatus(service.Get(), &status))
        return false;
    if (status.dwCurrentState != SERVICE_RUNNING && status.dwCurrentState != SERVICE_PAUSED)
        return true;
    const ServiceConfig config = ConfigToShow(service.Get(), serviceName);
    view.OnStopping(config.displayName);
    if (StopAndWait(service.Get(), status, view))
        return true;
    view.OnStopFailed(config.displayName);
    return false;
}
