// The restart of the agents' services, without windows.
#pragma once

#include "command/CommandError.h"
#include "command/ErrorLines.h"

// Restarts the agents, or starts them when they are stopped. Writes to the lines what it is at, and what
// fails.
[[nodiscard]] ExitCode RestartAgents(ErrorLines& lines);
