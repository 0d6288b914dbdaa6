// The one error that a load or a save raises: the number of the text that says what went wrong.
// Thrown and caught by value, by the registry accessor and the pages' saves alone; shown by the applet's
// entry.
#pragma once

#include "resources/resource.h"

// A string-table id.
using ConfigurationError = int;

// The user may not read or change this configuration.
inline constexpr ConfigurationError configurationRefused = IDS_ACCESS_DENIED;
