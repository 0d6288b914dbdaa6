// Registers and starts the made-up machine's services.
#include "Services.h"

#include "Error.h"

#include <array>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <type_traits>

namespace demo {

namespace {

struct ServiceCloser
{
    void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};
using ServiceHandle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, ServiceCloser>;

constexpr ULONGLONG bringUpLimit = 30'000; // milliseconds
constexpr DWORD pollInterval = 50;         // milliseconds

ServiceHandle OpenManager()
{
    ServiceHandle manager(OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT | SC_MANAGER_CREATE_SERVICE));
    RequireCall(manager != nullptr, "opening the service manager");
    return manager;
}

// In one process list services are told apart by the names of their programs, so each has a copy of its own.
std::filesystem::path CopyProgram(const std::filesystem::path& program, const std::string& name)
{
    const std::filesystem::path copy = program.parent_path() / "services" / name;
    std::filesystem::create_directory(copy.parent_path());
    std::filesystem::copy_file(program, copy, std::filesystem::copy_options::overwrite_existing);
    return copy;
}

// The service's program, in quotation marks, as the service manager wants a path that may hold blanks.
std::string ProgramPath(const ServiceEntry& entry)
{
    std::array<char, MAX_PATH> self{};
    RequireCall(GetModuleFileNameA(nullptr, self.data(), MAX_PATH) != 0, "finding the running program");
    auto program = std::filesystem::path(self.data()).replace_filename("AgentService.exe");
    if (!entry.program.empty())
        program = CopyProgram(program, entry.program);
    return '"' + program.string() + '"';
}

// All names of services are plain ASCII.
std::wstring Wide(const std::string& text)
{
    return {text.begin(), text.end()};
}

// Each name with its zero, and one more at the end, which std::wstring has by itself.
std::wstring ZeroSeparated(const std::vector<std::string>& names)
{
    std::wstring all;
    for (const auto& name : names)
        all.append(Wide(name).c_str(), name.size() + 1);
    return all;
}

SERVICE_STATUS StatusOf(const ServiceHandle& service, const std::string& name)
{
    SERVICE_STATUS status{};
    RequireCall(QueryServiceStatus(service.get(), &status) != FALSE, "asking for the state of " + name);
    return status;
}

bool IsDisabled(const ServiceHandle& service, const std::string& name)
{
    union // the configuration's texts follow it in the same buffer
    {
        QUERY_SERVICE_CONFIGA config;
        std::array<char, 8192> bytes;
    } buffer{};
    DWORD needed = 0;
    RequireCall(QueryServiceConfigA(service.get(), &buffer.config, sizeof buffer, &needed) != FALSE,
                "asking for the configuration of " + name);
    return buffer.config.dwStartType == SERVICE_DISABLED;
}

// Whether the service runs; one that stands still is started. While the manager itself starts services, it
// refuses with an error that passes, so what counts is that the service runs in the end.
bool RunsOrIsStarted(const ServiceHandle& service, const std::string& name)
{
    const DWORD state = StatusOf(service, name).dwCurrentState;
    if (state == SERVICE_STOPPED)
        StartServiceA(service.get(), 0, nullptr);
    return state == SERVICE_RUNNING;
}

} // namespace

// By the UTF-16 functions: Wine's 8-bit ones pass on the first dependency only, with garbage after it.
void InstallService(const ServiceEntry& entry)
{
    const auto manager = OpenManager();
    const std::wstring name = Wide(entry.name);
    const std::wstring displayName = Wide(entry.displayName);
    const std::wstring program = Wide(ProgramPath(entry));
    const std::wstring dependencies = ZeroSeparated(entry.dependencies);
    const ServiceHandle made(CreateServiceW(manager.get(), name.c_str(), displayName.c_str(),
                                            SERVICE_ALL_ACCESS, SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START,
                                            SERVICE_ERROR_NORMAL, program.c_str(), nullptr, nullptr,
                                            dependencies.c_str(), nullptr, nullptr));
    if (made)
        return;
    RequireCall(GetLastError() == ERROR_SERVICE_EXISTS, "registering the service " + entry.name);

    const ServiceHandle service(OpenServiceW(manager.get(), name.c_str(), SERVICE_CHANGE_CONFIG));
    RequireCall(service != nullptr, "opening the service " + entry.name);
    RequireCall(ChangeServiceConfigW(service.get(), SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START,
                                     SERVICE_ERROR_NORMAL, program.c_str(), nullptr, nullptr,
                                     dependencies.c_str(), nullptr, nullptr, displayName.c_str()) != FALSE,
                "changing the service " + entry.name);
}

void RemoveService(const std::string& name)
{
    const auto manager = OpenManager();
    const ServiceHandle service(OpenServiceA(manager.get(), name.c_str(), SERVICE_STOP | DELETE));
    if (!service)
        return;
    SERVICE_STATUS status{};
    ControlService(service.get(), SERVICE_CONTROL_STOP,
                   &status); // fails when it does not run: nothing to stop
    RequireCall(DeleteService(service.get()) != FALSE, "removing the service " + name);
}

void BringUpService(const std::string& name)
{
    const auto manager = OpenManager();
    const ServiceHandle service(OpenServiceA(manager.get(), name.c_str(), GENERIC_READ | SERVICE_START));
    RequireCall(service != nullptr, "opening the service " + name);
    if (IsDisabled(service, name))
        return;
    const ULONGLONG started = GetTickCount64();
    while (!RunsOrIsStarted(service, name)) {
        if (GetTickCount64() - started > bringUpLimit)
            throw std::runtime_error("the service " + name + " does not start");
        Sleep(pollInterval);
    }
}

} // namespace demo
