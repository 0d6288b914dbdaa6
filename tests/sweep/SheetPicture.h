// What an open sheet shows to its user.
#pragma once

#include "machine/SweepMachine.h"

namespace sweep {

// The sheet's title and every control of the page in front: text, tick, lines, choice, and whether it is
// enabled. Empty when no sheet is open.
[[nodiscard]] Picture LookAtSheet(const support::AppletHost& host);

} // namespace sweep
