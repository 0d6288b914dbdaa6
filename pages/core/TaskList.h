// The names of the processes that run now, from the host utility library of the agents.
#pragma once

#include <string>
#include <vector>

// Each name as the library writes it, in its order. Names that stand for no program of their own are left
// out, and so are further instances that follow a program directly. Empty without the library or its entry
// point. The library is loaded for the one call.
[[nodiscard]] std::vector<std::string> RunningProcessNames();
