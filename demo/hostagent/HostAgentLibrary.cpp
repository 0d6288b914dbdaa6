// Writes traps to the log beside this library.
#include "HostAgentLibrary.h"

#include "../support/Error.h"

#include <array>
#include <filesystem>
#include <fstream>

namespace {

std::filesystem::path LogPath()
{
    HMODULE self = nullptr;
    demo::RequireCall(GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                             GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                                         reinterpret_cast<const char*>(&sendVtnUserTrap), &self) != FALSE,
                      "finding this library");
    std::array<char, MAX_PATH> path{};
    demo::RequireCall(GetModuleFileNameA(self, path.data(), MAX_PATH) != 0, "finding this library's path");
    return std::filesystem::path(path.data()).replace_filename("traps.log");
}

std::string LocalTime()
{
    SYSTEMTIME now{};
    GetLocalTime(&now);
    std::array<char, 24> text{};
    wsprintfA(text.data(), "%04u-%02u-%02u %02u:%02u:%02u", now.wYear, now.wMonth, now.wDay, now.wHour,
              now.wMinute, now.wSecond);
    return text.data();
}

DWORD AppendLine(const char* text)
{
    std::ofstream log(LogPath(), std::ios::app);
    log << LocalTime() << ' ' << text << std::endl;
    return log ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
}

} // namespace

DWORD sendVtnUserTrap(const char* text)
{
    return demo::CodeOf([&] { return AppendLine(text); });
}
