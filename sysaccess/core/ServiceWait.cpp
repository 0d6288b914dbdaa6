// The wait for one service, round by round.
#include "sysaccess/core/ServiceWait.h"

namespace {

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
    // hint starts the count anew.
    DWORD SleepAfter(const SERVICE_STATUS& status)
    {
        const bool hasMoved = status.dwCheckPoint != m_checkPoint;
        m_checkPoint = status.dwCheckPoint;
        if (!hasMoved)
            return longestServiceSleep;
        if (status.dwWaitHint <= longestServiceSleep)
            return status.dwWaitHint;
        m_round = 0;
        m_limit = waitHintFactor * status.dwWaitHint / longestServiceSleep;
        return longestServiceSleep;
    }

  private:
    ULONGLONG m_round = 0;
    ULONGLONG m_limit = usualWaitRounds;
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

} // namespace

bool WaitForServiceState(SC_HANDLE service, SERVICE_STATUS& status, DWORD wantedState,
                         const std::function<void()>& beforeSleep)
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
        beforeSleep();
        Sleep(milliseconds);
    }
    return status.dwCurrentState == wantedState;
}
