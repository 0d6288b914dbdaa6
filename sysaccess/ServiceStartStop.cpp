// Starting, stopping and waiting for services; see the header.
#include "sysaccess/ServiceStartStop.h"

#include "resources/resource.h"
#include "sysaccess/core/ServiceQueries.h"
#include "sysaccess/MessageBoxes.h"

#include <vector>

namespace {

// The longest sleep between two looks at a service, and the sleep when its check point has not moved; in
// milliseconds.
constexpr DWORD longestSleep = 2500;
// How often a service is looked at that promises nothing better.
constexpr ULONGLONG usualRounds = 10;

// The wait for one service, round by round.
class ServiceWait
{
  public:
    // Whether another look is allowed; it counts as taken.
    bool TakeRound()
    {
        if (m_round >= m_limit)
            return false;
        ++m_round;
        return true;
    }

    // Milliseconds to sleep after a look that found the service pending. A new check point with a long wait
    // hint starts the count anew, with three times that hint to go.
    DWORD SleepAfter(const SERVICE_STATUS& status)
    {
        const bool hasMoved = status.dwCheckPoint != m_checkPoint;
        m_checkPoint = status.dwCheckPoint;
        if (!hasMoved)
            return longestSleep;
        if (status.dwWaitHint <= longestSleep)
            return status.dwWaitHint;
        m_round = 0;
        m_limit = ULONGLONG{3} * status.dwWaitHint / longestSleep;
        return longestSleep;
    }

  private:
    ULONGLONG m_round = 0;
    ULONGLONG m_limit = usualRounds;
    DWORD m_checkPoint = 0;
};

// The state that leads to a wanted one; nothing may be waited for but these two.
DWORD PendingStateBefore(DWORD wantedState)
{
    switch (wantedState) {
    case SERVICE_STOPPED:
        return SERVICE_STOP_PENDING;
    case SERVICE_RUNNING:
        return SERVICE_START_PENDING;
    default:
        return 0;
    }
}

// No window must not be passed on: Windows would repaint the whole screen.
void Repaint(HWND window)
{
    if (window == nullptr)
        return;
    InvalidateRect(window, nullptr, TRUE);
    UpdateWindow(window);
}

// What the manager's configuration says that matters here.
struct ServiceConfig
{
    DWORD startType = SERVICE_DEMAND_START;
    CString displayName;
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

// A configuration that cannot be read keeps no service from being started or stopped; its plain name is shown
// then.
ServiceConfig ReadConfig(SC_HANDLE service, const char* serviceName)
{
    std::vector<BYTE> buffer;
    if (!QueryConfig(service, buffer))
        return {.displayName = serviceName};
    const auto& record = *reinterpret_cast<const QUERY_SERVICE_CONFIGA*>(buffer.data());
    ServiceConfig config{record.dwStartType, record.lpDisplayName};
    // The texts say "service" themselves.
    if (config.displayName.Find("SNMP Service") >= 0)
        config.displayName = "SNMP";
    return config;
}

// A text of the string table with the service's name in its place.
CString ServiceText(UINT textId, const CString& displayName)
{
    CString text;
    text.Format(LoadText(textId), static_cast<LPCSTR>(displayName));
    return text;
}

bool StartAndWait(HWND owner, SC_HANDLE service, SERVICE_STATUS& status)
{
    if (!StartServiceA(service, 0, nullptr))
        return GetLastError() == ERROR_SERVICE_ALREADY_RUNNING;
    return WaitForServiceState(owner, service, status, SERVICE_RUNNING);
}

bool StopAndWait(HWND pleaseWait, SC_HANDLE service, SERVICE_STATUS& status)
{
    return ControlService(service, SERVICE_CONTROL_STOP, &status) &&
           WaitForServiceState(pleaseWait, service, status, SERVICE_STOPPED);
}

bool TellFailure(HWND owner, UINT textId, const CString& displayName)
{
    MessageBoxText(owner, ServiceText(textId, displayName), MB_ICONHAND);
    return false;
}

} // namespace

bool WaitForServiceState(HWND window, SC_HANDLE service, SERVICE_STATUS& status, DWORD wantedState)
{
    const DWORD pendingState = PendingStateBefore(wantedState);
    if (pendingState == 0)
        return false;
    ServiceWait wait;
    while (status.dwCurrentState != wantedState && wait.TakeRound()) {
        if (!QueryServiceStatus(service, &status))
            return false;
        if (status.dwCurrentState != pendingState)
            break;
        const DWORD milliseconds = wait.SleepAfter(status);
        Repaint(window);
        Sleep(milliseconds);
    }
    return status.dwCurrentState == wantedState;
}

bool StartServiceWithProgress(HWND owner, const char* serviceName, PleaseWaitSlot& pleaseWait)
{
    const UniqueServiceHandle service = OpenServiceForControl(serviceName);
    if (!service)
        return true;
    SERVICE_STATUS status{};
    if (!QueryServiceStatus(service.Get(), &status))
        return false;
    if (status.dwCurrentState != SERVICE_STOPPED)
        return true;
    const ServiceConfig config = ReadConfig(service.Get(), serviceName);
    if (config.startType == SERVICE_DISABLED)
        return true;
    ShowPleaseWait(owner, ServiceText(IDS_STARTING, config.displayName), pleaseWait);
    if (StartAndWait(owner, service.Get(), status))
        return true;
    return TellFailure(owner, IDS_CANNOT_START, config.displayName);
}

bool StopServiceWithProgress(HWND owner, const char* serviceName, PleaseWaitSlot& pleaseWait)
{
    const UniqueServiceHandle service = OpenServiceForControl(serviceName);
    if (!service)
        return true;
    SERVICE_STATUS status{};
    if (!QueryServiceStatus(service.Get(), &status))
        return false;
    if (status.dwCurrentState != SERVICE_RUNNING && status.dwCurrentState != SERVICE_PAUSED)
        return true;
    const ServiceConfig config = ReadConfig(service.Get(), serviceName);
    const HWND dialog = ShowPleaseWait(owner, ServiceText(IDS_STOPPING, config.displayName), pleaseWait);
    if (StopAndWait(dialog, service.Get(), status))
        return true;
    return TellFailure(owner, IDS_CANNOT_STOP, config.displayName);
}
