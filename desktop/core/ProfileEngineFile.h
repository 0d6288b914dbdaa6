// What opening and saving of the profile engine share: all that touches the file system. Used by the engine
// alone.
#pragma once

#include "desktop/core/ProfileEngine.h"
#include "sysaccess/core/Handles.h"

#include <windows.h>

// Opens a file for reading and writing and shares it with readers; `disposition` as CreateFileA takes it.
// Nothing when it fails, which FailureStatus explains.
[[nodiscard]] UniqueObject OpenShared(const char* path, DWORD disposition);

// Why the last file call failed. Never 0, which would read as success.
[[nodiscard]] std::int16_t FailureStatus();
