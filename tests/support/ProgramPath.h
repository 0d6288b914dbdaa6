// Where the running program lies.
#pragma once

#include <array>
#include <string>
#include <windows.h>

namespace support {

// Full path of the running program.
[[nodiscard]] inline std::string ProgramPath()
{
    std::array<char, MAX_PATH> path{};
    GetModuleFileNameA(nullptr, path.data(), MAX_PATH);
    return path.data();
}

// Full path of `relative`, a path from the directory of the running program.
[[nodiscard]] inline std::string BesideThisProgram(const std::string& relative)
{
    const std::string program = ProgramPath();
    return program.substr(0, program.rfind('\\') + 1) + relative;
}

} // namespace support
