// The test trap: the host agent's alerter sends an SNMP trap, so that an administrator can see whether traps
// arrive. For the SNMP Settings page; nothing here shows a window.
#pragma once

#include <string>

enum class TestTrapOutcome
{
    Sent,
    AlerterNotReady, // not started, or not done with its start
    NotGenerated,    // the host agent is not there, or has failed
};

// Whether it makes sense to offer a test trap: SNMP is at work, and traps have been set up.
[[nodiscard]] bool CanSendTestTrap();

// Sends a trap with the date and time, in English, so that whoever reads it at the other end knows which one
// it is. When it was sent, `text` is what it says.
[[nodiscard]] TestTrapOutcome SendTestTrap(std::string& text);
