// The kinds of values that members have: taken from the document, and described in its schema.
#pragma once

#include "command/Json.h"

#include <string>
#include <vector>

// Each throws CommandError, which names the path, when the value is of another type.
[[nodiscard]] bool RequireBoolean(const Json& value, const std::string& path);
[[nodiscard]] std::string RequireText(const Json& value, const std::string& path);
void RequireObject(const Json& value, const std::string& path);

// A text in the system's code page, without zeros. Throws CommandError when it cannot be one.
[[nodiscard]] std::string RequireLocalText(const Json& value, const std::string& path);

// "a, b and c".
[[nodiscard]] std::string Listed(const std::vector<std::string>& names);

// Schemas.
[[nodiscard]] Json BooleanSchema(const char* description);
[[nodiscard]] Json TextSchema(const char* description);
// An object with just these members, none of which must be there.
[[nodiscard]] Json ObjectSchema(const char* description, Json members);
