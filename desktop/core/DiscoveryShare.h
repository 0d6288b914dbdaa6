// What domain clients find when their login script runs the discovery client: the program and its profile in
// the script directory, and the share to which it reports. Each step is done again without harm. Used by the
// settings of desktop management.
#pragma once

#include <string>

// Name of this machine, at most 15 characters; empty when the system does not tell.
[[nodiscard]] std::string ComputerName();

// Copies the client from the agents' directory to the script directory, over one that is there.
[[nodiscard]] bool InstallClient(const std::string& scriptDirectory);
// True also when the script directory holds no client.
[[nodiscard]] bool RemoveClient(const std::string& scriptDirectory);

// Makes the directory for the clients' reports and shares it; true also when it is shared already.
[[nodiscard]] bool AddDiscoveryShare();
// True also when it is not shared. The directory stays.
[[nodiscard]] bool DeleteDiscoveryShare();

// Writes the share's network path to the client's profile in the script directory.
[[nodiscard]] bool TellClientsOfShare(const std::string& scriptDirectory);
// Takes it out again. A profile that cannot be changed stays: without the share it leads nowhere.
void StopTellingClients(const std::string& scriptDirectory);

// Lets clients report before anybody has logged on. Both throw ConfigurationError when the server's settings
// cannot be read or written.
void OpenShareToAnonymous();
// Takes out the first entry that is exactly the share's name; clients compare without regard to letter case,
// but entries in another one are somebody else's.
void CloseShareToAnonymous();
