// Which pages this machine and the command line offer to the user; for the table of pages.
#pragma once

// For the pages that every user sees.
[[nodiscard]] bool IsAlwaysOffered();

// True on a domain controller, or when the administrator asks for the page by "/CLIENT".
[[nodiscard]] bool IsDesktopOffered();

// False while the agents are being installed ("/SETUP").
[[nodiscard]] bool IsProcessMonitorOffered();

// True when the remote management board answers a read.
[[nodiscard]] bool IsBoardOffered();
