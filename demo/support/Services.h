// The service manager as the made-up machine uses it: to register its services, to start them, to take them
// away.
#pragma once

#include <string>
#include <vector>

namespace demo {

// A service of the machine.
struct ServiceEntry
{
    std::string name;
    std::string displayName;
    std::vector<std::string> dependencies; // names of services
    std::string program{};                 // file name of a copy of AgentService.exe, if not that itself
};

// Registers the service for automatic start, or changes the one of that name to be like this.
// AgentService.exe lies beside the running program; the copy is made in the directory "services" there.
// Throws std::system_error.
void InstallService(const ServiceEntry& entry);

// Stops the service, if it can be stopped, and takes it away. A service that is not there is no error.
void RemoveService(const std::string& name);

// Starts the service unless it is disabled, and waits until it runs; so does a service that is starting
// already. Throws std::runtime_error when it does not run within 30 seconds.
void BringUpService(const std::string& name);

} // namespace demo
