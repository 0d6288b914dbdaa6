// The name of this machine in the network.
#pragma once

#include <string>

// At most 15 characters; empty when the system does not report it.
[[nodiscard]] std::string ComputerName();
