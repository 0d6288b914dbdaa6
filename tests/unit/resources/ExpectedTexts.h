// The one table of what the English resources hold, string by string and control by control. The Japanese
// ones are held against the same table: the same numbers, classes and styles.
#pragma once

#include <iterator>
#include <span>
#include <windows.h>

struct ExpectedString
{
    UINT id;
    const char* text;
};

struct ExpectedControl
{
    int id;
    const char* windowClass;
    DWORD styles; // bits that have to be set
    const char* text;
};

struct ExpectedDialog
{
    int id;
    int width; // dialog units, like the height
    int height;
    DWORD styles;
    const char* caption;
    std::span<const ExpectedControl> controls; // in tab order
};

[[nodiscard]] std::span<const ExpectedString> ExpectedStrings();
[[nodiscard]] std::span<const ExpectedDialog> ExpectedDialogs();

// Throws std::out_of_range for a number that the table does not have.
[[nodiscard]] const ExpectedDialog& ExpectedDialogOf(int id);
