// What the applet owes its user after a failed call: the message, the changes that are still made, what may
// stay open. The fault sweep compares each case with this.
#pragma once

#include "sweep/Operation.h"

#include <optional>

namespace sweep {

// How an operation goes on after a failed call.
enum class Ending
{
    GoesOn,   // as if nothing had happened, without what the call was to do
    Reports,  // with one more message, and goes on
    Ends,     // without a word
    EndsWith, // a message
    Replaces, // the message that comes next by another, and goes on
};

struct Expectation
{
    Ending ending = Ending::GoesOn;
    UINT text = 0;                // the message's, in the string table
    bool keepsOpen = false;       // what the call was given: its key or library
    bool changesContents = false; // a default stands in for what was not read, so other things are written
    // SNMP cannot stop either, which is reported, too: after so many messages of the run without a fault.
    std::optional<std::size_t> boxOfSnmp = std::nullopt;
};

// `call` is the failing one's number, from 1, among those of the run without a fault.
[[nodiscard]] Expectation Expected(const Operation& operation, const std::vector<Call>& calls,
                                   const Fault& fault);

// Whether a change may be missing because of the failed call: it is about the same key, service or file.
[[nodiscard]] bool MayBeMissing(const std::vector<Call>& calls, const Fault& fault, const Call& change);

} // namespace sweep
