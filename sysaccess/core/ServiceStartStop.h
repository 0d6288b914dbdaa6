// Starts and stops one service, shows what it is at, and reports when it does not work. Everything here
// blocks its thread.
#pragma once

#include <string>

// What the user sees of starts and stops. Services are called by their display names.
class ServiceProgressView
{
  public:
    virtual ~ServiceProgressView() = default;

    // Before a service is started or stopped.
    virtual void OnStarting(const std::string& displayName) = 0;
    virtual void OnStopping(const std::string& displayName) = 0;
    // Before each sleep of the wait for it.
    virtual void OnWaiting() = 0;
    // After a start or stop that did not work.
    virtual void OnStartFailed(const std::string& displayName) = 0;
    virtual void OnStopFailed(const std::string& displayName) = 0;
};

// Starts a stopped service, unless it is disabled. False when it could not be started, which the view has
// reported, or its state not be read. A service that is not there, or that is not stopped, is none to start:
// true.
bool StartServiceWithProgress(const char* serviceName, ServiceProgressView& view);

// Stops a running or paused service, in the same way.
bool StopServiceWithProgress(const char* serviceName, ServiceProgressView& view);
