// The one error that a load or a save raises: the number of the text that says what went wrong.
// Thrown and caught by value: by the registry accessor, the saves, and pages whose list box has no room.
// Shown by the applet's entry, reported by the command line.
#pragma once

#include "resources/resource.h"

// A string-table id.
using ConfigurationError = int;

// The user may not read or change this configuration.
inline constexpr ConfigurationError configurationRefused = IDS_ACCESS_DENIED;
