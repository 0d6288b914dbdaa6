// The steps that the profile engine's operations are made of: finding sections and entries, reading values,
// writing lines. Used by the engine alone. None of these steps changes anything when it fails, apart from the
// cursor.
#pragma once

#include "desktop/core/ProfileEngineLines.h"

// The first header of the request's section from the top of the file; null without one.
[[nodiscard]] ProfileLine* FindProfileSection(const ProfileRequest& request);

// Puts the cursor on the first entry with the request's key, from `line` (may be null) to the next section
// header. Without one it returns false, and the cursor is on the last line that could have been one.
[[nodiscard]] bool FindProfileEntry(ProfileRequest& request, ProfileLine* line);

// Reads the value of the cursor line, which has the request's key.
void ReadProfileValue(const ProfileRequest& request, ProfileText& value);
// Copies that value into the caller's buffer, if there is one.
void CopyProfileValue(const ProfileRequest& request);

// True when `text` contains `part`, in any letter case; `offset` becomes the place of the first occurrence.
// An empty part is contained in every text.
[[nodiscard]] bool ContainsText(const ProfileText& text, const char* part, std::size_t& offset);

// Rewrites the cursor line as the request's key and `value` in `format`. Its kind stays, whatever the text
// now is.
[[nodiscard]] std::int16_t RewriteProfileLine(ProfileRequest& request, const char* format, const char* value);

// Inserts the request's key and value in `format` below `place` and puts the cursor there.
[[nodiscard]] std::int16_t InsertProfileLine(ProfileRequest& request, ProfileLine* place, const char* format);

// Appends an empty line and a header with the request's section name, and puts the cursor on the header.
[[nodiscard]] std::int16_t AppendProfileSection(ProfileRequest& request);

// Appends the request's key and value at the end of the file; in sectioned mode below a header of their own.
// Puts the cursor there.
[[nodiscard]] std::int16_t AppendProfileEntry(ProfileRequest& request);

// Deletes the cursor line; the cursor moves to the next one, if any.
void DeleteCurrentProfileLine(ProfileRequest& request);
