// Sends traps, and keeps the log of them beside this library.
#include "HostAgentLibrary.h"

#include "SnmpTrap.h"

#include "../support/Error.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

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

DWORD AppendLine(const std::string& text)
{
    std::ofstream log(LogPath(), std::ios::app);
    log << LocalTime() << ' ' << text << std::endl;
    return log ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
}

// The port of whoever receives traps on this machine; 0 when nobody does.
unsigned short ReceiverPort()
{
    std::array<char, 8> port{};
    GetEnvironmentVariableA(receiverPortVariable, port.data(), port.size());
    return static_cast<unsigned short>(std::strtoul(port.data(), nullptr, 10));
}

DWORD SendTrap(const char* text)
{
    const unsigned short port = ReceiverPort();
    if (port == 0)
        return AppendLine(std::string("nobody receives traps here: ") + text);
    demo::SendToPort(demo::EncodeTrap(text, GetTickCount() / 10), port);
    return AppendLine("sent to UDP port " + std::to_string(port) + ": " + text);
}

} // namespace

DWORD sendVtnUserTrap(const char* text)
{
    return demo::CodeOf([&] { return SendTrap(text); });
}
