// Windows' own functions, taken from their library instead of the import table: test support that must not
// see the hooks that a test put there calls these.
#pragma once

#include <windows.h>

namespace support {

// The function `name` of the loaded library `library`.
template <typename Function>
[[nodiscard]] Function* SystemFunction(const char* library, const char* name)
{
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), name)));
}

} // namespace support
