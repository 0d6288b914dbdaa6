// Asks the system for the computer's name.
#include "sysaccess/core/ComputerName.h"

#include <array>
#include <windows.h>

std::string ComputerName()
{
    std::array<char, MAX_COMPUTERNAME_LENGTH + 1> name{};
    DWORD size = name.size();
    return GetComputerNameA(name.data(), &size) ? name.data() : "";
}
