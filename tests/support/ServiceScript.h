// A service manager that does what the test says: named services whose states come from a list, calls
// that fail on demand, and every call written down. For the tests of service control, whose waits and
// failures no real service shows to the letter.
#pragma once

#include "imports/ImportHook.h"
#include "support/CallLog.h"
#include "support/Mutex.h"

#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <vector>
#include <windows.h>

namespace support {

// What QueryServiceStatus answers; `waitHint` in milliseconds.
[[nodiscard]] SERVICE_STATUS ServiceState(DWORD state, DWORD checkPoint = 0, DWORD waitHint = 0);

// One service. Its state is the first of `states`; each query answers it and goes on to the next, the last
// stays.
struct ScriptedService
{
    std::string displayName = {};
    DWORD startType = SERVICE_DEMAND_START;
    std::deque<SERVICE_STATUS> states = {ServiceState(SERVICE_STOPPED)};
    // What becomes of the states when a start or a stop is accepted.
    std::deque<SERVICE_STATUS> afterStart = {ServiceState(SERVICE_RUNNING)};
    std::deque<SERVICE_STATUS> afterStop = {ServiceState(SERVICE_STOPPED)};
    // Services that depend on this one, in the order in which they are reported.
    std::vector<std::string> dependents = {};
    // Services on which this one depends.
    std::vector<std::string> dependencies = {};
};

// Stands in for the service functions of one module (those that it imports); one script at a time. It keeps
// Windows' rules: a handle allows what it was opened for, a running service does not start, a disabled one
// neither, a service with running dependents does not stop, a buffer that is too small gets the size it
// needs. Entries of the log are the function, the service and what was asked:
//
//     OpenSCManagerA ServicesActive 0x20000000
//     OpenServiceA SNMP 0xf01ff
//     ControlService SNMP 1
//     ChangeServiceConfigA SNMP startType=4
class ServiceScript
{
  public:
    // Throws std::runtime_error when the module does not import OpenSCManagerA. `log` may be shared with
    // other scripts.
    explicit ServiceScript(HMODULE module, CallLog* log = nullptr);
    ServiceScript(const ServiceScript&) = delete;
    ServiceScript& operator=(const ServiceScript&) = delete;

    // Installs a service, or another in its place.
    void Add(const std::string& name, ScriptedService service);
    // The service as it is now; throws std::out_of_range when there is none.
    [[nodiscard]] ScriptedService Service(const std::string& name) const;
    // The state that the next query answers.
    [[nodiscard]] DWORD State(const std::string& name) const;

    // Fails calls of `function` for the service `name` (empty for the manager) with `error`: the call number
    // `call` from now on, or all of them for 0.
    void Fail(const std::string& function, const std::string& name, DWORD error, int call = 0);

    [[nodiscard]] std::vector<std::string> Calls() const { return m_log->Calls(); }
    [[nodiscard]] const CallLog& Log() const { return *m_log; }
    // Handles of the manager and of services that are not closed.
    [[nodiscard]] int OpenHandles() const;

  private:
    // An opened manager, which has no name, or service.
    struct Opened
    {
        std::string name;
        DWORD access = 0;
        bool isOpen = true;
    };
    struct Failure
    {
        std::string function;
        std::string name;
        DWORD error;
        int call;
        int count = 0;
    };

    static SC_HANDLE WINAPI OpenManager(LPCSTR machine, LPCSTR database, DWORD access);
    static SC_HANDLE WINAPI Open(SC_HANDLE manager, LPCSTR name, DWORD access);
    static BOOL WINAPI QueryStatus(SC_HANDLE handle, LPSERVICE_STATUS status);
    static BOOL WINAPI QueryConfig(SC_HANDLE handle, LPQUERY_SERVICE_CONFIGA config, DWORD size,
                                   LPDWORD needed);
    static BOOL WINAPI EnumDependents(SC_HANDLE handle, DWORD state, LPENUM_SERVICE_STATUSA list, DWORD size,
                                      LPDWORD needed, LPDWORD count);
    static BOOL WINAPI Start(SC_HANDLE handle, DWORD count, LPCSTR* arguments);
    static BOOL WINAPI Control(SC_HANDLE handle, DWORD control, LPSERVICE_STATUS status);
    static BOOL WINAPI ChangeConfig(SC_HANDLE handle, DWORD type, DWORD startType, DWORD errorControl,
                                    LPCSTR path, LPCSTR group, LPDWORD tag, LPCSTR dependencies,
                                    LPCSTR account, LPCSTR password, LPCSTR displayName);
    static BOOL WINAPI Close(SC_HANDLE handle);

    SC_HANDLE NewHandle(const std::string& name, DWORD access);
    Opened* Find(SC_HANDLE handle);
    ScriptedService* Begin(const std::string& function, SC_HANDLE handle, DWORD access,
                           const std::string& detail = {});
    bool IsToFail(const std::string& function, const std::string& name);
    [[nodiscard]] DWORD StartError(const ScriptedService& service) const;
    [[nodiscard]] DWORD StopError(const ScriptedService& service) const;
    [[nodiscard]] std::vector<std::string> DependentsIn(const ScriptedService& service, DWORD states) const;
    [[nodiscard]] std::string DisplayName(const std::string& name) const;
    [[nodiscard]] SERVICE_STATUS Status(const std::string& name) const;

    mutable Mutex m_mutex;
    std::map<std::string, ScriptedService> m_services;
    std::vector<Opened> m_opened;
    std::vector<Failure> m_failures;
    CallLog m_ownLog;
    CallLog* m_log;
    Turn<ServiceScript> m_turn;
    ReplacedImport m_openManager;
    ReplacedImport m_open;
    ReplacedImport m_queryStatus;
    ReplacedImport m_queryConfig;
    ReplacedImport m_enumDependents;
    ReplacedImport m_start;
    ReplacedImport m_control;
    ReplacedImport m_changeConfig;
    ReplacedImport m_close;
};

} // namespace support
