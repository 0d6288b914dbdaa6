// The service functions as the script answers them; see the header.
#include "support/ServiceScript.h"

#include "imports/TextsBehind.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace support {
namespace {

// Handles are the places of the opened, from a number that is no pointer and no other handle.
constexpr std::size_t firstHandle = 0x5C0000;

ServiceScript& Script()
{
    return Turn<ServiceScript>::Active();
}

template <typename Result>
Result Refuse(DWORD error, Result result)
{
    SetLastError(error);
    return result;
}

std::string Hex(DWORD number)
{
    std::ostringstream text;
    text << "0x" << std::hex << number;
    return text.str();
}

// A service handle's rights, the general ones spelt out.
DWORD ServiceRights(DWORD access)
{
    GENERIC_MAPPING mapping{};
    mapping.GenericRead = STANDARD_RIGHTS_READ | SERVICE_QUERY_CONFIG | SERVICE_QUERY_STATUS |
                          SERVICE_INTERROGATE | SERVICE_ENUMERATE_DEPENDENTS;
    mapping.GenericWrite = STANDARD_RIGHTS_WRITE | SERVICE_CHANGE_CONFIG;
    mapping.GenericExecute = STANDARD_RIGHTS_EXECUTE | SERVICE_START | SERVICE_STOP | SERVICE_PAUSE_CONTINUE |
                             SERVICE_USER_DEFINED_CONTROL;
    mapping.GenericAll = SERVICE_ALL_ACCESS;
    MapGenericMask(&access, &mapping);
    return access;
}

std::vector<std::string> SplitMultiString(LPCSTR block)
{
    std::vector<std::string> texts;
    for (; *block != '\0'; block += texts.back().size() + 1)
        texts.emplace_back(block);
    return texts;
}

std::string Join(const std::vector<std::string>& texts, char separator)
{
    std::string joined;
    for (const std::string& text : texts)
        joined += text + separator;
    return joined;
}

} // namespace

SERVICE_STATUS ServiceState(DWORD state, DWORD checkPoint, DWORD waitHint)
{
    SERVICE_STATUS status{};
    status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
    status.dwCurrentState = state;
    status.dwControlsAccepted = state == SERVICE_RUNNING || state == SERVICE_PAUSED ? SERVICE_ACCEPT_STOP : 0;
    status.dwCheckPoint = checkPoint;
    status.dwWaitHint = waitHint;
    return status;
}

ServiceScript::ServiceScript(HMODULE module, CallLog* log)
    : m_log(log != nullptr ? log : &m_ownLog), m_turn(this),
      m_openManager(module, "OpenSCManagerA", &OpenManager), m_open(module, "OpenServiceA", &Open),
      m_queryStatus(module, "QueryServiceStatus", &QueryStatus),
      m_queryConfig(module, "QueryServiceConfigA", &QueryConfig),
      m_enumDependents(module, "EnumDependentServicesA", &EnumDependents),
      m_start(module, "StartServiceA", &Start), m_control(module, "ControlService", &Control),
      m_changeConfig(module, "ChangeServiceConfigA", &ChangeConfig),
      m_close(module, "CloseServiceHandle", &Close)
{
    if (!m_openManager.IsImported())
        throw std::runtime_error("not imported: OpenSCManagerA");
}

void ServiceScript::Add(const std::string& name, ScriptedService service)
{
    const std::lock_guard lock(m_mutex);
    m_services[name] = std::move(service);
}

ScriptedService ServiceScript::Service(const std::string& name) const
{
    const std::lock_guard lock(m_mutex);
    return m_services.at(name);
}

DWORD ServiceScript::State(const std::string& name) const
{
    return Service(name).states.front().dwCurrentState;
}

void ServiceScript::Fail(const std::string& function, const std::string& name, DWORD error, int call)
{
    const std::lock_guard lock(m_mutex);
    m_failures.push_back({function, name, error, call});
}

int ServiceScript::OpenHandles() const
{
    const std::lock_guard lock(m_mutex);
    return static_cast<int>(std::ranges::count_if(m_opened, &Opened::isOpen));
}

SC_HANDLE ServiceScript::NewHandle(const std::string& name, DWORD access)
{
    m_opened.push_back({name, access, true});
    return reinterpret_cast<SC_HANDLE>(firstHandle + m_opened.size() - 1);
}

ServiceScript::Opened* ServiceScript::Find(SC_HANDLE handle)
{
    const std::size_t place = reinterpret_cast<std::size_t>(handle) - firstHandle;
    return place < m_opened.size() && m_opened[place].isOpen ? &m_opened[place] : nullptr;
}

bool ServiceScript::IsToFail(const std::string& function, const std::string& name)
{
    for (Failure& failure : m_failures) {
        if (failure.function != function || failure.name != name)
            continue;
        ++failure.count;
        if (failure.call == 0 || failure.call == failure.count)
            return Refuse(failure.error, true);
    }
    return false;
}

// What all functions on a service begin with: the entry in the log, then the reasons to refuse; null with the
// last error set when there is one.
ScriptedService* ServiceScript::Begin(const std::string& function, SC_HANDLE handle, DWORD access,
                                      const std::string& detail)
{
    const Opened* opened = Find(handle);
    if (opened == nullptr || opened->name.empty()) {
        m_log->Add(function + " (invalid handle)");
        return Refuse<ScriptedService*>(ERROR_INVALID_HANDLE, nullptr);
    }
    m_log->Add(function + " " + opened->name + detail);
    if (IsToFail(function, opened->name))
        return nullptr;
    if ((opened->access & access) != access)
        return Refuse<ScriptedService*>(ERROR_ACCESS_DENIED, nullptr);
    return &m_services.at(opened->name);
}

SC_HANDLE ServiceScript::OpenManager(LPCSTR machine, LPCSTR database, DWORD access)
{
    ServiceScript& self = Script();
    const std::lock_guard lock(self.m_mutex);
    const std::string where = machine == nullptr ? "" : machine;
    self.m_log->Add("OpenSCManagerA " + (where.empty() ? where : where + " ") +
                    (database == nullptr ? "(null)" : database) + " " + Hex(access));
    return self.IsToFail("OpenSCManagerA", "") ? nullptr : self.NewHandle("", access);
}

SC_HANDLE ServiceScript::Open(SC_HANDLE manager, LPCSTR name, DWORD access)
{
    ServiceScript& self = Script();
    const std::lock_guard lock(self.m_mutex);
    self.m_log->Add("OpenServiceA " + std::string(name) + " " + Hex(access));
    const Opened* opened = self.Find(manager);
    if (opened == nullptr || !opened->name.empty())
        return Refuse<SC_HANDLE>(ERROR_INVALID_HANDLE, nullptr);
    if (self.IsToFail("OpenServiceA", name))
        return nullptr;
    if (!self.m_services.contains(name))
        return Refuse<SC_HANDLE>(ERROR_SERVICE_DOES_NOT_EXIST, nullptr);
    return self.NewHandle(name, ServiceRights(access));
}

BOOL ServiceScript::QueryStatus(SC_HANDLE handle, LPSERVICE_STATUS status)
{
    ServiceScript& self = Script();
    const std::lock_guard lock(self.m_mutex);
    ScriptedService* service = self.Begin("QueryServiceStatus", handle, SERVICE_QUERY_STATUS);
    if (service == nullptr)
        return FALSE;
    *status = service->states.front();
    if (service->states.size() > 1)
        service->states.pop_front();
    return TRUE;
}

BOOL ServiceScript::QueryConfig(SC_HANDLE handle, LPQUERY_SERVICE_CONFIGA config, DWORD size, LPDWORD needed)
{
    ServiceScript& self = Script();
    const std::lock_guard lock(self.m_mutex);
    const ScriptedService* service = self.Begin("QueryServiceConfigA", handle, SERVICE_QUERY_CONFIG);
    if (service == nullptr)
        return FALSE;
    // The list of dependencies ends with a zero of its own, which c_str() adds.
    const std::string dependencies = Join(service->dependencies, '\0');
    const std::string path = "C:\\scripted.exe";
    const std::string account = "LocalSystem";
    *needed = static_cast<DWORD>(sizeof *config + dependencies.size() + path.size() + account.size() +
                                 service->displayName.size() + 5);
    if (size < *needed)
        return Refuse(ERROR_INSUFFICIENT_BUFFER, FALSE);
    TextsBehind<char> texts(config + 1);
    *config = {SERVICE_WIN32_OWN_PROCESS, service->startType, SERVICE_ERROR_NORMAL,
               texts.Put(path),           texts.Put(""),      0,
               texts.Put(dependencies),   texts.Put(account), texts.Put(service->displayName)};
    return TRUE;
}

std::string ServiceScript::DisplayName(const std::string& name) const
{
    const auto found = m_services.find(name);
    return found == m_services.end() ? name : found->second.displayName;
}

SERVICE_STATUS ServiceScript::Status(const std::string& name) const
{
    const auto found = m_services.find(name);
    return found == m_services.end() ? ServiceState(SERVICE_STOPPED) : found->second.states.front();
}

std::vector<std::string> ServiceScript::DependentsIn(const ScriptedService& service, DWORD states) const
{
    std::vector<std::string> names = service.dependents;
    std::erase_if(names, [&](const std::string& name) {
        const bool isStopped = Status(name).dwCurrentState == SERVICE_STOPPED;
        return (states & (isStopped ? SERVICE_INACTIVE : SERVICE_ACTIVE)) == 0;
    });
    return names;
}

BOOL ServiceScript::EnumDependents(SC_HANDLE handle, DWORD state, LPENUM_SERVICE_STATUSA list, DWORD size,
                                   LPDWORD needed, LPDWORD count)
{
    ServiceScript& self = Script();
    const std::lock_guard lock(self.m_mutex);
    const ScriptedService* service =
        self.Begin("EnumDependentServicesA", handle, SERVICE_ENUMERATE_DEPENDENTS,
                   " states=" + std::to_string(state) + " size=" + std::to_string(size));
    if (service == nullptr)
        return FALSE;
    const std::vector<std::string> names = self.DependentsIn(*service, state);
    *needed = 0;
    *count = 0;
    for (const std::string& name : names)
        *needed += static_cast<DWORD>(sizeof *list + name.size() + self.DisplayName(name).size() + 2);
    if (size < *needed)
        return Refuse(ERROR_MORE_DATA, FALSE);
    TextsBehind<char> texts(list + names.size());
    for (const std::string& name : names)
        list[(*count)++] = {texts.Put(name), texts.Put(self.DisplayName(name)), self.Status(name)};
    return TRUE;
}

DWORD ServiceScript::StartError(const ScriptedService& service) const
{
    if (service.states.front().dwCurrentState != SERVICE_STOPPED)
        return ERROR_SERVICE_ALREADY_RUNNING;
    return service.startType == SERVICE_DISABLED ? ERROR_SERVICE_DISABLED : ERROR_SUCCESS;
}

BOOL ServiceScript::Start(SC_HANDLE handle, DWORD count, LPCSTR* arguments)
{
    ServiceScript& self = Script();
    const std::lock_guard lock(self.m_mutex);
    std::string detail;
    for (DWORD index = 0; index < count; ++index)
        detail += std::string(" ") + arguments[index];
    ScriptedService* service = self.Begin("StartServiceA", handle, SERVICE_START, detail);
    if (service == nullptr)
        return FALSE;
    if (const DWORD error = self.StartError(*service); error != ERROR_SUCCESS)
        return Refuse(error, FALSE);
    service->states = service->afterStart;
    return TRUE;
}

DWORD ServiceScript::StopError(const ScriptedService& service) const
{
    const DWORD state = service.states.front().dwCurrentState;
    if (state == SERVICE_STOPPED)
        return ERROR_SERVICE_NOT_ACTIVE;
    if (state == SERVICE_START_PENDING || state == SERVICE_STOP_PENDING)
        return ERROR_SERVICE_CANNOT_ACCEPT_CTRL;
    return DependentsIn(service, SERVICE_ACTIVE).empty() ? ERROR_SUCCESS : ERROR_DEPENDENT_SERVICES_RUNNING;
}

BOOL ServiceScript::Control(SC_HANDLE handle, DWORD control, LPSERVICE_STATUS status)
{
    ServiceScript& self = Script();
    const std::lock_guard lock(self.m_mutex);
    ScriptedService* service =
        self.Begin("ControlService", handle, SERVICE_STOP, std::string(" ").append(std::to_string(control)));
    if (service == nullptr)
        return FALSE;
    if (control != SERVICE_CONTROL_STOP)
        return Refuse(ERROR_INVALID_SERVICE_CONTROL, FALSE);
    const DWORD error = self.StopError(*service);
    if (error == ERROR_SUCCESS)
        service->states = service->afterStop;
    // Windows returns the state also when it refuses; it is not used up by that.
    *status = service->states.front();
    return error == ERROR_SUCCESS ? TRUE : Refuse(error, FALSE);
}

BOOL ServiceScript::ChangeConfig(SC_HANDLE handle, DWORD type, DWORD startType, DWORD errorControl,
                                 LPCSTR path, LPCSTR group, LPDWORD /*tag*/, LPCSTR dependencies,
                                 LPCSTR account, LPCSTR /*password*/, LPCSTR displayName)
{
    ServiceScript& self = Script();
    const std::lock_guard lock(self.m_mutex);
    std::string detail;
    for (const auto& [name, number] : {std::pair("type", type), std::pair("startType", startType),
                                       std::pair("errorControl", errorControl)})
    {
        if (number != SERVICE_NO_CHANGE)
            detail += std::string(" ") + name + "=" + std::to_string(number);
    }
    for (const auto& [name, text] : {std::pair("path", path), std::pair("group", group),
                                     std::pair("account", account), std::pair("displayName", displayName)})
    {
        if (text != nullptr)
            detail += std::string(" ") + name + "=" + text;
    }
    if (dependencies != nullptr)
        detail += " dependencies=" + Join(SplitMultiString(dependencies), '/');
    ScriptedService* service = self.Begin("ChangeServiceConfigA", handle, SERVICE_CHANGE_CONFIG, detail);
    if (service == nullptr)
        return FALSE;
    if (startType != SERVICE_NO_CHANGE)
        service->startType = startType;
    if (dependencies != nullptr)
        service->dependencies = SplitMultiString(dependencies);
    if (displayName != nullptr)
        service->displayName = displayName;
    return TRUE;
}

BOOL ServiceScript::Close(SC_HANDLE handle)
{
    ServiceScript& self = Script();
    const std::lock_guard lock(self.m_mutex);
    Opened* opened = self.Find(handle);
    self.m_log->Add("CloseServiceHandle " + (opened == nullptr      ? "(invalid handle)"
                                             : opened->name.empty() ? "(manager)"
                                                                    : opened->name));
    if (opened == nullptr)
        return Refuse(ERROR_INVALID_HANDLE, FALSE);
    opened->isOpen = false;
    return TRUE;
}

} // namespace support
