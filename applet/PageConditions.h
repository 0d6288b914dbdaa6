// What the machine and the command line must be like for the pages that not every user sees.
#pragma once

// True on a domain controller, or when the administrator asks for the page by "/CLIENT".
[[nodiscard]] bool IsDesktopMgmtOffered();

// False while the agents are being installed ("/SETUP").
[[nodiscard]] bool IsProcessMonitorOffered();

// True when the remote management board answers a read.
[[nodiscard]] bool IsRemoteLumoraOffered();
