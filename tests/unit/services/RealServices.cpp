// Registers and removes the tests' services. See the header.
#include "RealServices.h"

#include "support/ProgramPath.h"
#include "support/UiThread.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>

namespace {

// Runs the service program by hand.
void RunServiceProgram(const std::string& arguments)
{
    std::string command =
        '"' + support::BesideThisProgram("..\\..\\..\\demo\\AgentService.exe") + "\" " + arguments;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process))
        throw std::runtime_error("cannot run " + command);
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD exitCode = 0;
    GetExitCodeProcess(process.hProcess, &exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    if (exitCode != 0)
        throw std::runtime_error(command + " failed");
}

} // namespace

RealService::RealService(std::string name, const std::string& displayName,
                         const std::vector<std::string>& settings)
    : m_name(std::move(name)), m_manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT))
{
    std::string arguments = "--install " + m_name + " \"" + displayName + '"';
    for (const std::string& setting : settings)
        arguments += ' ' + setting;
    RunServiceProgram(arguments);
    m_service = OpenServiceA(m_manager, m_name.c_str(), SERVICE_ALL_ACCESS);
}

RealService::~RealService()
{
    if (const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, ProcessId()); process != nullptr) {
        TerminateProcess(process, 0);
        CloseHandle(process);
    }
    DeleteService(m_service);
    CloseServiceHandle(m_service);
    CloseServiceHandle(m_manager);
}

SERVICE_STATUS_PROCESS RealService::Status() const
{
    SERVICE_STATUS_PROCESS status{};
    DWORD needed = 0;
    QueryServiceStatusEx(m_service, SC_STATUS_PROCESS_INFO, reinterpret_cast<BYTE*>(&status), sizeof status,
                         &needed);
    return status;
}

void RealService::Start() const
{
    StartServiceA(m_service, 0, nullptr);
    EXPECT_TRUE(support::WaitUntil([this] { return State() == SERVICE_RUNNING; })) << m_name;
}

void RealService::Pause() const
{
    SERVICE_STATUS status{};
    ControlService(m_service, SERVICE_CONTROL_PAUSE, &status);
    EXPECT_TRUE(support::WaitUntil([this] { return State() == SERVICE_PAUSED; })) << m_name;
}

void RealService::Disable() const
{
    ChangeServiceConfigA(m_service, SERVICE_NO_CHANGE, SERVICE_DISABLED, SERVICE_NO_CHANGE, nullptr, nullptr,
                         nullptr, nullptr, nullptr, nullptr, nullptr);
}
