// Where the domain's login script lies. Used by the settings of desktop management.
#pragma once

#include <string>

// The directory from which this version of Windows serves login scripts, without a backslash at its end;
// empty when the system does not report it. Before Windows 2000 it stands in the registry, where a key or
// value that cannot be read counts as an absent one: nothing is thrown.
[[nodiscard]] std::string FindScriptDirectory();

// The path up to, not including, its last backslash; empty without one. The second byte of a double-byte
// character is no backslash.
[[nodiscard]] std::string DirectoryOf(const std::string& path);
