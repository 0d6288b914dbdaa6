// The switches that an administrator may give the program that opens the applet.
#pragma once

// No Process Monitor page, no restart offer and no reboot notice: the agents are just being installed.
inline constexpr char setupSwitch[] = "/SETUP";
// The Desktop Mgmt page is shown, and switched on.
inline constexpr char clientSwitch[] = "/CLIENT";

// True when the command line of the process contains `text`, which is in capitals, in any letter case and
// anywhere: hosts pass switches along in ways of their own.
[[nodiscard]] bool CommandLineContains(const char* text);
