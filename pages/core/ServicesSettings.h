// Which sub-agents the agent services start, and how the services start themselves; without a window.
#pragma once

#include "pages/core/AgentGroup.h"

#include <vector>

class ServicesSettings
{
  public:
    // Reads the sub-agents of every agent service. A service whose sub-agents cannot be read is left out.
    void Load();

    // Writes for each service which sub-agents it starts and whether it starts at all, and on what the main
    // one depends, to the registry and the service manager. `limit` is the most sub-agents that one service
    // gets. Throws ConfigurationError when a registry value cannot be written; what was written stays. What
    // the service manager refuses is ignored: it reads the registry when the system starts.
    void Save(std::size_t limit) const;

    std::vector<AgentGroup> groups;
};
