// What the user does in one case of the fault sweep, and what came of it.
#pragma once

#include "machine/SweepMachine.h"

#include <set>
#include <span>

namespace sweep {

// What is switched on before the operation.
enum class Before
{
    Nothing,
    Clients,                         // desktop management
    ClientsUntilTheScriptIsReadOnly, // somebody makes it so while it is edited
    ExceptionTrap,
};

// One row of the table of operations. `act` is swept: only its calls are counted and fail.
struct Operation
{
    const char* name;
    const char* tab; // shown before `act`; null for none
    Before before;
    bool agrees;       // to what is asked
    const char* from;  // counting begins with this function; null: at once
    const char* until; // and ends with this one, before the restart is offered; null: with the sheet
    void (*edit)(support::AppletHost& host); // once the sheet is open; null: `act` opens it
    void (*act)(support::AppletHost& host);
    // Done once more after a failure that the user heard of, it ends as without the failure.
    bool settles = false;
};

std::ostream& operator<<(std::ostream& out, const Operation& operation);

// Every operation that is swept call by call.
[[nodiscard]] std::span<const Operation> Operations();

// Operations that open the sheet and save at once: what a failed opening shows must not get stored.
[[nodiscard]] std::span<const Operation> OpenAndSaveOperations();

// How one run of an operation went.
struct Outcome
{
    std::vector<Call> calls;
    std::size_t allocations = 0; // up to the end of the sheet
    std::size_t blocksLeft = 0;  // more than before it
    Picture shown;               // what an operation that opens or shows something put on the screen
    std::vector<std::string> boxes;
    Picture before;
    Picture after;
    Picture settled; // after a second try without a fault, of an operation that settles
    std::map<std::string, std::set<std::string>> seen; // all contents that each item ever had
    std::vector<std::string> leftOpen;                 // what the applet opened and did not close
    std::size_t windowsLeft = 0;
    std::string thrown; // an exception that left CPlApplet
};

// The items of `found` that `expected` does not have or has otherwise, and, empty, those that are missing.
[[nodiscard]] Picture Difference(const Picture& expected, const Picture& found);

// What fails in a run; nothing for 0.
struct Fault
{
    std::size_t call = 0;        // the number of a call, from 1
    DWORD code = 0;              // its error
    std::size_t allocation = 0;  // the number of an allocation of the applet, from 1
    std::size_t allocations = 1; // how many fail from there on
    // With functions, each with its error, only calls of these count, and all from number `call` on fail.
    std::map<std::string, DWORD> lasting = {};
};

// Runs the operation on settings of its own. With `watchChanges`, `seen` is filled at every change.
[[nodiscard]] Outcome Perform(Subject& subject, const Operation& operation, const Fault& fault,
                              bool watchChanges = false);

} // namespace sweep
