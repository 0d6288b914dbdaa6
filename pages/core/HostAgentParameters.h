// Where the host agent keeps what the Process Monitor and Event Log pages show.
#pragma once

#include "sysaccess/core/AgentNames.h"
#include "sysaccess/core/RegistryKey.h"

// The host agent's parameters on this machine.
[[nodiscard]] inline CRegistryKey HostAgentParameters()
{
    return {HKEY_LOCAL_MACHINE, hostParametersKey};
}
