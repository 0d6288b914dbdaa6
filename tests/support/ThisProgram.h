// The running program as a module, for hooks in its own import table.
#pragma once

#include <windows.h>

namespace support {

inline const HMODULE thisProgram = GetModuleHandleA(nullptr);

} // namespace support
