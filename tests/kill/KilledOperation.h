// What an administrator does in one case of the kill sweep, in a process that ends in the middle of it.
#pragma once

#include "command/Json.h"
#include "machine/SweepMachine.h"

#include <span>
#include <string>

namespace sweep {

// The login script before, in the case of desktop management.
enum class Script
{
    Absent,
    Small,
    Large,     // 40 KB
    ReadOnly,  // small
    TwoBlocks, // somebody copied what the applet had put in
};

enum class Clients
{
    Untouched,
    SwitchedOn,
    SwitchedOff,
};

// One row of the table of operations.
struct KilledOperation
{
    const char* name;
    bool isInSample;
    Clients clients;
    Script script;
    bool agrees;                                // to a restart or clearing
    const char* from;                           // counting begins with this function; null: at once
    void (*edit)(support::AppletHost& host);    // leaves everything changed, whatever it finds
    void (*act)(support::AppletHost& host);     // is counted; null for vtncfg
    void (*restore)(support::AppletHost& host); // needed besides to set things right; mostly null
    bool startsWithTrap = false;                // the agents' debugger is the system's
    const char* document = nullptr;             // for `vtncfg set`
    const char* opposite = nullptr;             // another for everything in it
};

[[nodiscard]] std::span<const KilledOperation> KilledOperations();
// Throws std::out_of_range when there is none of this name.
[[nodiscard]] const KilledOperation& OperationNamed(const std::string& name);

// Brings the machine to where the operation begins. Returns what the stand-ins hold besides.
[[nodiscard]] Json PrepareMachine(const KilledOperation& operation, Settings& settings);

// The applet's lines in a login script of this machine.
[[nodiscard]] std::string BlockOfScript();

// What the login script may be between the two savings of an update, each time that it is saved, and in the
// end.
[[nodiscard]] std::vector<std::string> ScriptStages(const KilledOperation& operation,
                                                    const std::string& before);

} // namespace sweep
