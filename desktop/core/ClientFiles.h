// The discovery client's files in the script directory: its program, which login scripts run, and its
// profile, which says where it sends its reports. Each step can be repeated. Used by the settings of desktop
// management.
#pragma once

#include <string>

// Copies the client from the agents' directory to the script directory, over one that is there.
[[nodiscard]] bool InstallClient(const std::string& scriptDirectory);
// True also when the script directory holds no client.
[[nodiscard]] bool RemoveClient(const std::string& scriptDirectory);

// Writes the network path of the discovery share to the client's profile. False also without the computer's
// name, which is part of the path.
[[nodiscard]] bool WriteReportPath(const std::string& scriptDirectory);
// Takes it out again. A profile that cannot be changed stays: the share it names is gone.
void RemoveReportPath(const std::string& scriptDirectory);
