// The calls of the service manager.
#include "sysaccess/core/ServiceQueries.h"

#include <array>

namespace {

// Room for the configuration of a service, in bytes.
constexpr DWORD configSize = 1088;

// Room for the first try, and what is added to the manager's answer for the second: services may be installed
// in between. In bytes.
constexpr DWORD dependentsSize = 1024;
constexpr DWORD dependentsMargin = 512;

UniqueServiceHandle OpenManager(DWORD access)
{
    return UniqueServiceHandle(OpenSCManagerA(nullptr, SERVICES_ACTIVE_DATABASEA, access));
}

bool IsActiveState(DWORD state)
{
    switch (state) {
    case SERVICE_START_PENDING:
    case SERVICE_RUNNING:
    case SERVICE_CONTINUE_PENDING:
    case SERVICE_PAUSE_PENDING:
    case SERVICE_PAUSED:
        return true;
    default:
        return false;
    }
}

// The manager is asked for a service's configuration before the services that depend on it. Whatever it
// answers makes no difference.
void ReadConfigInPassing(SC_HANDLE service)
{
    alignas(QUERY_SERVICE_CONFIGA) std::array<BYTE, configSize> config;
    DWORD needed = 0;
    QueryServiceConfigA(service, reinterpret_cast<QUERY_SERVICE_CONFIGA*>(config.data()), configSize,
                        &needed);
}

// One query for dependents: their records, which point into the buffer.
struct DependentsQuery
{
    explicit DependentsQuery(DWORD size) : buffer(size) {}

    bool Run(SC_HANDLE service)
    {
        return EnumDependentServicesA(service, SERVICE_STATE_ALL, Records(),
                                      static_cast<DWORD>(buffer.size()), &bytesNeeded, &count) != FALSE;
    }
    ENUM_SERVICE_STATUSA* Records() { return reinterpret_cast<ENUM_SERVICE_STATUSA*>(buffer.data()); }

    std::vector<BYTE> buffer; // from the heap, so aligned for any record
    DWORD bytesNeeded = 0;
    DWORD count = 0;
};

// Reads the configuration record into `buffer`, its texts behind it, which the record points to.
bool QueryConfig(SC_HANDLE service, std::vector<BYTE>& buffer)
{
    const auto query = [&](DWORD& size) {
        return QueryServiceConfigA(service, reinterpret_cast<QUERY_SERVICE_CONFIGA*>(buffer.data()), size,
                                   &size) != FALSE;
    };
    buffer.resize(sizeof(QUERY_SERVICE_CONFIGA) + 1024);
    auto size = static_cast<DWORD>(buffer.size());
    if (query(size))
        return true;
    if (GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return false;
    // A long list of dependencies needs more.
    buffer.resize(size);
    return query(size);
}

} // namespace

UniqueServiceHandle OpenServiceOf(const UniqueServiceHandle& manager, const char* serviceName, DWORD access)
{
    return UniqueServiceHandle(manager ? OpenServiceA(manager.Get(), serviceName, access) : nullptr);
}

UniqueServiceHandle OpenServiceForControl(const char* serviceName)
{
    return OpenServiceOf(OpenManager(GENERIC_EXECUTE), serviceName);
}

std::optional<DWORD> ReadServiceState(SC_HANDLE service)
{
    SERVICE_STATUS status{};
    if (service == nullptr || !QueryServiceStatus(service, &status))
        return std::nullopt;
    return status.dwCurrentState;
}

std::optional<ServiceConfig> ReadServiceConfig(SC_HANDLE service)
{
    std::vector<BYTE> buffer;
    if (!QueryConfig(service, buffer))
        return std::nullopt;
    const auto& record = *reinterpret_cast<const QUERY_SERVICE_CONFIGA*>(buffer.data());
    ServiceConfig config{.startType = record.dwStartType,
                         .displayName = record.lpDisplayName == nullptr ? "" : record.lpDisplayName};
    const char* name = record.lpDependencies;
    while (name != nullptr && *name != '\0') {
        config.dependencies.emplace_back(name);
        name += config.dependencies.back().size() + 1;
    }
    return config;
}

bool IsServiceActive(const char* serviceName)
{
    const UniqueServiceHandle manager = OpenManager(GENERIC_READ);
    if (!manager)
        return true;
    const UniqueServiceHandle service = OpenServiceOf(manager, serviceName, SERVICE_QUERY_STATUS);
    const std::optional<DWORD> state = ReadServiceState(service.Get());
    return state.has_value() && IsActiveState(*state);
}

bool GetDependentServices(const char* serviceName, std::vector<std::string>& names)
{
    names.clear();
    // All rights, although a list needs fewer: who may not control the service gets no list of what to stop
    // and start with it.
    const UniqueServiceHandle service = OpenServiceForControl(serviceName);
    if (!service)
        return true;
    ReadConfigInPassing(service.Get());
    DependentsQuery query(dependentsSize);
    bool isListed = query.Run(service.Get());
    if (!isListed && GetLastError() == ERROR_MORE_DATA) {
        query = DependentsQuery(query.bytesNeeded + dependentsMargin);
        isListed = query.Run(service.Get());
    }
    if (!isListed)
        return false;
    for (DWORD index = 0; index < query.count; ++index)
        names.emplace_back(query.Records()[index].lpServiceName);
    return true;
}
