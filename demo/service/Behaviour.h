// How a service of the made-up machine behaves: what its own registry key says, so that a test can make a
// slow service, one that hangs, one that fails.
#pragma once

#include <array>
#include <string>
#include <windows.h>

namespace demo {

// The values of "Parameters" below the service's key. Times are milliseconds; INFINITE (4294967295) as a
// delay leaves the service in its pending state for ever.
struct Behaviour
{
    DWORD startDelay = 0; // from the start to running
    DWORD startSteps = 0; // how often the check point advances on the way
    DWORD stopDelay = 0;  // from the stop to stopped
    DWORD stopSteps = 0;
    DWORD waitHint = 0;       // reported while a change is pending
    DWORD startError = 0;     // Win32 code with which the start fails, 0 for success
    DWORD runTime = 0;        // stops by itself after so long, 0 for never
    std::string readyMutex{}; // held open while the service runs, as a sign to other programs; empty for none
};

struct BehaviourValue
{
    const char* name;
    DWORD Behaviour::*field;
};

// Each number that can be set, by the name of its registry value.
inline constexpr std::array<BehaviourValue, 7> behaviourValues{{
    {"StartDelay", &Behaviour::startDelay},
    {"StartSteps", &Behaviour::startSteps},
    {"StopDelay", &Behaviour::stopDelay},
    {"StopSteps", &Behaviour::stopSteps},
    {"WaitHint", &Behaviour::waitHint},
    {"StartError", &Behaviour::startError},
    {"RunTime", &Behaviour::runTime},
}};
inline constexpr const char* readyMutexValue = "ReadyMutex";

// The path, below HKEY_LOCAL_MACHINE, of the key that holds the service's behaviour.
[[nodiscard]] std::string BehaviourKey(const std::string& serviceName);

// What the registry says now; the defaults above for what it does not say.
[[nodiscard]] Behaviour LoadBehaviour(const std::string& serviceName);

// Writes every number, and the mutex's name when there is one. Throws std::system_error.
void StoreBehaviour(const std::string& serviceName, const Behaviour& behaviour);

} // namespace demo
