// The profile engine's list of lines, and how the text of a line is made and taken apart. Used by the engine
// alone.
#pragma once

#include "desktop/core/ProfileEngine.h"

#include <array>

// Room for any line or value.
using ProfileText = std::array<char, profileTextSize>;

// The text, or an empty one for null.
[[nodiscard]] inline const char* TextOrEmpty(const char* text)
{
    return text == nullptr ? "" : text;
}

// True when entries are "key = value" below section headers.
[[nodiscard]] inline bool IsSectioned(const ProfileRequest& request)
{
    return (request.flags & (PROF_SECTIONED | PROF_COMPACT)) == PROF_SECTIONED;
}

// True when the key of a line is the whole line.
[[nodiscard]] inline bool IsRaw(const ProfileRequest& request)
{
    return (request.flags & (PROF_SECTIONED | PROF_COMPACT)) == 0;
}

// Makes an unlinked line with a copy of the text; null without memory.
[[nodiscard]] ProfileLine* NewProfileLine(const char* text);
// Frees a line and all that follow it; null is no line.
void FreeProfileLines(ProfileLine* first);
// Copies the lines from `first` to before `end`, either of which may be null, below `last`, the last of its
// list. Without memory it copies none and returns false.
[[nodiscard]] bool CopyProfileLines(const ProfileLine* first, const ProfileLine* end, ProfileLine* last);

// The last line of the list that `line` is in.
[[nodiscard]] ProfileLine* LastProfileLine(ProfileLine* line);
// Links an unlinked line, with those that follow it, below `place`.
void LinkProfileLines(ProfileLine* place, ProfileLine* first);
// Takes a line out of its list and frees it.
void DeleteProfileLine(ProfileLine* line);

// The first line below `header` that is a section header, or null.
[[nodiscard]] ProfileLine* SectionEnd(const ProfileLine* header);

// Copies a line without leading blanks, with each run of spaces and tabs as one space.
void NormaliseProfileText(const char* text, ProfileText& copy);

// Makes a text of a printf format with two strings. Returns 0, or PROF_TOO_LONG when it does not fit.
[[nodiscard]] std::int16_t FormatProfileText(const char* format, const char* first, const char* second,
                                             ProfileText& text);
