// The document: its text, and what differs between two of them.
#pragma once

#include "command/Json.h"

#include <string>
#include <vector>

// The largest text that is taken for a document, in bytes.
inline constexpr std::size_t documentLimit = 1'048'576;

// Takes a document apart: UTF-8, with or without a byte order mark, or UTF-16 with one, as Windows PowerShell
// writes it. Throws CommandError with the place when it is no JSON, no object, or names a member twice.
[[nodiscard]] Json ParseDocument(const std::string& text);

// One line of ASCII.
[[nodiscard]] std::string OneLine(const Json& value);

// One member that is to become another.
struct MemberChange
{
    std::string path; // from the top of the document, with dots
    Json before;
    Json after;
};

// What differs between two values of one type, member by member; `absent` stands for one that is not there.
[[nodiscard]] std::vector<MemberChange> ChangesBetween(const std::string& path, const Json& before,
                                                       const Json& after, const Json& absent);
