// The profile engine's operations that change a part of a value. Used by the engine alone; each returns a
// status.
#pragma once

#include "desktop/core/ProfileEngine.h"

// From the cursor on, which is on the first line: put the request's value in front of the ";"-list with the
// key, or at its end. A missing list is appended.
[[nodiscard]] std::int16_t PrependToList(ProfileRequest& request);
[[nodiscard]] std::int16_t AppendToList(ProfileRequest& request);

// From the cursor on, which is on the first line: cut the first occurrence of the request's value out of the
// entry's.
[[nodiscard]] std::int16_t RemoveFromValue(ProfileRequest& request);

// Below the cursor, which is on the section's header: put ", " and the request's value behind the entry's.
[[nodiscard]] std::int16_t AppendValueInSection(ProfileRequest& request);
