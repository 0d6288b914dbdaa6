// The restart in dialogs; see the header.
#include "sysaccess/AgentRestart.h"

#include "sysaccess/ServiceStartStop.h"

bool CanControlAgents(HWND owner, DWORD hostState)
{
    if (CanControlAgents(hostState))
        return true;
    PleaseWaitSlot none;
    ServiceDialogs(owner, none).OnNotControllable(hostState);
    return false;
}

void RestartAgentServices(HWND owner)
{
    PleaseWaitSlot pleaseWait;
    ServiceDialogs dialogs(owner, pleaseWait);
    RestartAgentServices(dialogs);
}
