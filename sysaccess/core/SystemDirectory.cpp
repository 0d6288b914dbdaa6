// The system directory.
#include "sysaccess/core/SystemDirectory.h"

#include <array>
#include <string>

HMODULE LoadSystemLibrary(const char* fileName)
{
    std::array<char, MAX_PATH> directory{};
    const UINT length = GetSystemDirectoryA(directory.data(), MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return nullptr;
    return LoadLibraryA((std::string(directory.data()) + '\\' + fileName).c_str());
}
