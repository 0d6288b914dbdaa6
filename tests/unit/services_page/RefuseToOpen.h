// A key that the program under test may not open.
#pragma once

#include "imports/ImportHook.h"

#include <string>

// Refuses the key with this path below HKEY_LOCAL_MACHINE as long as the result lives. One at a time.
[[nodiscard]] inline auto RefuseToOpen(const std::string& path)
{
    return support::HookImport<decltype(RegOpenKeyA)>(
        GetModuleHandleA(nullptr), "RegOpenKeyA", [path](auto original, HKEY root, LPCSTR subkey, PHKEY key) {
            return path == subkey ? LSTATUS{ERROR_ACCESS_DENIED} : original(root, subkey, key);
        });
}
