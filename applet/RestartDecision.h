// Whether what the user changed asks for a restart of the agents, and for one of the machine.
#pragma once

// Which pages say that they were changed, after the sheet has closed with OK.
struct PageChanges
{
    bool services = false;
    bool storage = false;
    bool snmpSettings = false;
    bool desktopMgmt = false; // what it changed takes effect only after a reboot
    bool remoteLumora = false;
    bool processMonitor = false;
};

// What follows the saving.
struct RestartDecision
{
    bool restartAgents = false; // offer to restart the agents' services
    bool rebootNotice = false;  // afterwards, say that the machine must be rebooted
};

// Desktop management needs the reboot and the agents with it; the board page alone needs only the agents.
[[nodiscard]] constexpr RestartDecision DecideRestart(const PageChanges& changes)
{
    if (changes.services || changes.snmpSettings || changes.processMonitor || changes.storage)
        return {.restartAgents = true, .rebootNotice = changes.desktopMgmt};
    if (changes.desktopMgmt)
        return {.restartAgents = true, .rebootNotice = true};
    return {.restartAgents = changes.remoteLumora, .rebootNotice = false};
}
