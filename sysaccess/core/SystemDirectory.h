// Libraries of Windows, from where Windows keeps them.
#pragma once

#include <windows.h>

// Loads a library from the system directory alone; null when it is not there. The search of LoadLibraryA for
// a bare name would begin in the directory of the host's program.
[[nodiscard]] HMODULE LoadSystemLibrary(const char* fileName);
