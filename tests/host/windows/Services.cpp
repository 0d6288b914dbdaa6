// A service manager without services. Tests that need some put a script in the place of these functions, as
// they do on Windows.
#include "Import.h"

#include <windows.h>

namespace {

// The one handle that there can be.
SC_HANDLE Manager()
{
    static char manager;
    return reinterpret_cast<SC_HANDLE>(&manager);
}

template <typename Result>
Result Refuse(DWORD error)
{
    SetLastError(error);
    return Result{};
}

SC_HANDLE OpenManager(LPCSTR machine, LPCSTR /*database*/, DWORD /*access*/)
{
    return machine == nullptr || *machine == '\0' ? Manager() : Refuse<SC_HANDLE>(ERROR_BAD_NETPATH);
}

SC_HANDLE OpenNone(SC_HANDLE manager, LPCSTR /*name*/, DWORD /*access*/)
{
    return Refuse<SC_HANDLE>(manager == Manager() ? ERROR_SERVICE_DOES_NOT_EXIST : ERROR_INVALID_HANDLE);
}

BOOL Close(SC_HANDLE handle)
{
    return handle == Manager() ? TRUE : Refuse<BOOL>(ERROR_INVALID_HANDLE);
}

// No handle is one of a service, so every call with one is refused.
template <typename... Arguments>
BOOL RefuseHandle(SC_HANDLE /*service*/, Arguments... /*arguments*/)
{
    return Refuse<BOOL>(ERROR_INVALID_HANDLE);
}

const standin::Import<decltype(OpenSCManagerA)> openManagerImport("OpenSCManagerA", OpenManager);
const standin::Import<decltype(OpenServiceA)> openImport("OpenServiceA", OpenNone);
const standin::Import<decltype(CloseServiceHandle)> closeImport("CloseServiceHandle", Close);
const standin::Import<decltype(QueryServiceStatus)> statusImport("QueryServiceStatus", RefuseHandle);
const standin::Import<decltype(QueryServiceConfigA)> configImport("QueryServiceConfigA", RefuseHandle);
const standin::Import<decltype(EnumDependentServicesA)> enumImport("EnumDependentServicesA", RefuseHandle);
const standin::Import<decltype(StartServiceA)> startImport("StartServiceA", RefuseHandle);
const standin::Import<decltype(ControlService)> controlImport("ControlService", RefuseHandle);
const standin::Import<decltype(ChangeServiceConfigA)> changeImport("ChangeServiceConfigA", RefuseHandle);

} // namespace

void MapGenericMask(LPDWORD access, GENERIC_MAPPING* mapping)
{
    const DWORD generic = *access;
    *access &= ~(GENERIC_READ | GENERIC_WRITE | GENERIC_EXECUTE | GENERIC_ALL);
    *access |= (generic & GENERIC_READ) != 0 ? mapping->GenericRead : 0;
    *access |= (generic & GENERIC_WRITE) != 0 ? mapping->GenericWrite : 0;
    *access |= (generic & GENERIC_EXECUTE) != 0 ? mapping->GenericExecute : 0;
    *access |= (generic & GENERIC_ALL) != 0 ? mapping->GenericAll : 0;
}

SC_HANDLE OpenSCManagerA(LPCSTR machine, LPCSTR database, DWORD access)
{
    return openManagerImport(machine, database, access);
}

SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access)
{
    return openImport(manager, name, access);
}

BOOL CloseServiceHandle(SC_HANDLE handle)
{
    return closeImport(handle);
}

BOOL QueryServiceStatus(SC_HANDLE service, LPSERVICE_STATUS status)
{
    return statusImport(service, status);
}

BOOL QueryServiceConfigA(SC_HANDLE service, LPQUERY_SERVICE_CONFIGA config, DWORD size, LPDWORD needed)
{
    return configImport(service, config, size, needed);
}

BOOL EnumDependentServicesA(SC_HANDLE service, DWORD state, LPENUM_SERVICE_STATUSA list, DWORD size,
                            LPDWORD needed, LPDWORD count)
{
    return enumImport(service, state, list, size, needed, count);
}

BOOL StartServiceA(SC_HANDLE service, DWORD count, LPCSTR* arguments)
{
    return startImport(service, count, arguments);
}

BOOL ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status)
{
    return controlImport(service, control, status);
}

BOOL ChangeServiceConfigA(SC_HANDLE service, DWORD type, DWORD startType, DWORD errorControl, LPCSTR path,
                          LPCSTR group, LPDWORD tag, LPCSTR dependencies, LPCSTR account, LPCSTR password,
                          LPCSTR displayName)
{
    return changeImport(service, type, startType, errorControl, path, group, tag, dependencies, account,
                        password, displayName);
}
