// The host agent's library for the tests: keeps the text in the environment of the process, where it outlives
// the library, and answers the status that it finds there.
#include <array>
#include <cstdlib>
#include <windows.h>

extern "C" __declspec(dllexport) DWORD sendVtnUserTrap(const char* text);

DWORD sendVtnUserTrap(const char* text)
{
    std::array<char, 16> status{};
    SetEnvironmentVariableA("VTN_TEST_TRAP_TEXT", text);
    GetEnvironmentVariableA("VTN_TEST_TRAP_STATUS", status.data(), status.size());
    return static_cast<DWORD>(std::strtoul(status.data(), nullptr, 10));
}
