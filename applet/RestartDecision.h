// Whether what the user changed asks for a restart of the agents, and for one of the machine.
#pragma once

#include "applet/PageTable.h"

// What follows the saving.
struct RestartDecision
{
    bool restartAgents = false; // offer to restart the agents' services
    bool rebootNotice = false;  // afterwards, say that the machine must be rebooted
};

// Decides after the sheet has closed with OK; `isChanged` says of each PageRole whether its page was changed.
template <typename IsChanged>
[[nodiscard]] constexpr RestartDecision DecideRestart(IsChanged isChanged)
{
    RestartDecision decision;
    for (const PageRule& page : pageTable) {
        if (!isChanged(page.role))
            continue;
        decision.restartAgents = true;
        if (page.restart == PageRestart::AgentsAndMachine)
            decision.rebootNotice = true;
    }
    return decision;
}
