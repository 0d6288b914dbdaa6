// What the made-up machine's registry holds besides the agents' services.
#pragma once

namespace demo {

enum class ServerKind
{
    DomainController,
    MemberServer
};

// Makes the system what a server of that kind says it is. Throws std::system_error, as the others do.
void SetServerKind(ServerKind kind);

// The settings of the agents, of the board and of the debuggers; thresholds that can be cleared.
void MakeSettings();

// The login script with its share, and the directories of the agents' files.
void MakeDomainFiles();

} // namespace demo
