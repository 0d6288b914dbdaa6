// Another process of this program, which performs one operation and may end in the middle of it, or meet
// others at work.
#pragma once

#include "command/Json.h"
#include "kill/KilledOperation.h"

#include <optional>
#include <string>
#include <vector>

namespace sweep {

enum class Happening
{
    ProcessEnds,
    ProcessEndsHalfway, // through a WriteFile
    AnotherSaves,       // all of its operation, in a process of its own
    SessionEnds, // the windows get the messages of the system, and the sheet and its dialogs are closed
    HostCloses,  // Control Panel's own window is closed, with all that it owns
};

// What happens before call number `call` (from 1) of the process; nothing for 0.
struct Event
{
    std::size_t call = 0;
    Happening happening = Happening::ProcessEnds;
    std::string other = {}; // the operation of the one who saves
};

// Whether it takes the sheet away.
[[nodiscard]] constexpr bool ClosesSheet(Happening happening)
{
    return happening == Happening::SessionEnds || happening == Happening::HostCloses;
}

[[nodiscard]] constexpr bool EndsProcess(Happening happening)
{
    return happening == Happening::ProcessEnds || happening == Happening::ProcessEndsHalfway;
}

// Where the operation finds its files.
struct Paths
{
    std::string windows;
    std::string scripts;
};

// What the process does: the operation, or what sets right what an ended one has left.
enum class Task
{
    Perform,
    Repair,
};

// What came of it.
struct Report
{
    std::vector<Call> calls = {}; // functions, places and roles alone
    std::vector<std::string> boxes = {};
    Json standInsBefore;
    Json standIns;
};

// Runs the operation in a process of its own, on the settings of `paths` and with stand-ins as they were
// left in `standIns` (null for as they begin). Throws std::runtime_error when the process does not end as it
// is to.
[[nodiscard]] Report RunOperation(const KilledOperation& operation, Task task, const Event& event,
                                  const Paths& paths, const Json& standIns);

// The other side: does what the file asks for and returns the exit code.
int RunAsChild(const std::string& requestFile);

[[nodiscard]] Json ToJson(const support::SharedDirectory& share);
[[nodiscard]] Json ToJson(const StandInState& state);
// Changes those members of the state that the JSON has.
void TakeJson(StandInState& state, const Json& json);

} // namespace sweep
