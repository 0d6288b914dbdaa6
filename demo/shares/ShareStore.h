// The shares of the made-up machine, kept where and how Windows keeps them: a REG_MULTI_SZ value per share,
// named like it, of "Name=Value" texts, below "SYSTEM\CurrentControlSet\Services\LanmanServer\Shares".
#pragma once

#include "imports/ShareAnswer.h"

#include <optional>
#include <string>
#include <windows.h>

namespace demo {

using support::Share;

// The share of that name, in any letter case; nothing when there is none.
[[nodiscard]] std::optional<Share> FindShare(const std::wstring& name);

// Writes the share, over one of that name. Throws std::system_error.
void StoreShare(const Share& share);

// Takes the share away; false when there is none of that name.
[[nodiscard]] bool RemoveShare(const std::wstring& name);

} // namespace demo
