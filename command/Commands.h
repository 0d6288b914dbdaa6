// The commands of the program, from the arguments to the exit code.
#pragma once

#include "command/CommandError.h"
#include "command/Streams.h"

#include <string>
#include <vector>

// Does what the arguments (those after the program's name, in UTF-8) ask for, and reports errors to the
// streams.
[[nodiscard]] ExitCode RunCommand(const std::vector<std::string>& arguments, Streams& streams);
