// The host agent as far as the applet needs it for a test trap: a mutex that says that its alerter is ready,
// and a library in its place on this machine.
#pragma once

#include "support/AppletHost.h"
#include "support/ProgramPath.h"
#include "sysaccess/core/AgentNames.h"

#include <array>
#include <filesystem>
#include <string>
#include <windows.h>

namespace support {

// A variable of this process; empty when it is not there.
inline std::string EnvironmentVariable(const char* name)
{
    std::array<char, 256> value{};
    GetEnvironmentVariableA(name, value.data(), value.size());
    return value.data();
}

// The alerter is ready while it lives.
class ReadyAlerter
{
  public:
    explicit ReadyAlerter(const char* mutexName = alerterMutex)
        : m_mutex(CreateMutexA(nullptr, FALSE, mutexName))
    {
    }
    ~ReadyAlerter() { CloseHandle(m_mutex); }
    ReadyAlerter(const ReadyAlerter&) = delete;
    ReadyAlerter& operator=(const ReadyAlerter&) = delete;

  private:
    HANDLE m_mutex;
};

// While it lives, a library stands where the host agent's own is installed. The one that sends answers
// `status` for each trap.
class InstalledHostAgent
{
  public:
    // `file` is the path of the library from the directory of the test program.
    explicit InstalledHostAgent(const std::string& file, DWORD status = 0)
    {
        SetEnvironmentVariableA("VTN_TEST_TRAP_TEXT", nullptr);
        SetEnvironmentVariableA("VTN_TEST_TRAP_STATUS", std::to_string(status).c_str());
        std::filesystem::create_directories(Path().parent_path());
        std::filesystem::copy_file(BesideThisProgram(file), Path(),
                                   std::filesystem::copy_options::overwrite_existing);
    }
    ~InstalledHostAgent() { Remove(); }
    InstalledHostAgent(const InstalledHostAgent&) = delete;
    InstalledHostAgent& operator=(const InstalledHostAgent&) = delete;

    // Makes the machine one without the library, whatever an earlier run has left there.
    static void Remove()
    {
        std::error_code ignored; // a library that a failed test left loaded stays
        std::filesystem::remove_all(Path().parent_path().parent_path(), ignored);
    }

    // The text of the last trap; empty when there was none.
    [[nodiscard]] static std::string SentText() { return EnvironmentVariable("VTN_TEST_TRAP_TEXT"); }
    [[nodiscard]] static bool IsLoaded() { return GetModuleHandleA("VTNMHOST.DLL") != nullptr; }

    [[nodiscard]] static std::filesystem::path Path()
    {
        return std::filesystem::path(EnvironmentVariable("windir")) /
               "system32\\vtnmgmt\\vtmghost\\VTNMHOST.DLL";
    }
};

} // namespace support
