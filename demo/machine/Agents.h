// The agents of the made-up machine: the services, and each agent group's sub-agents.
#pragma once

namespace demo {

// Registers every service and writes the agent groups' keys. Throws std::system_error.
void MakeAgents();

// Starts the services that are not disabled, in the order of their dependencies, and waits until they run.
// Throws std::runtime_error.
void BringUpAgents();

} // namespace demo
