// The two ways in which every layer above talks to the user, and the texts of the string table.
#pragma once

#include <afxstr.h>
#include <windows.h>

// The text with this id in the language of the user interface; empty when there is none.
[[nodiscard]] CString LoadText(UINT textId);

// Shows the text and the caption with these ids, in MessageBoxA's `style`; returns the button pressed (IDOK,
// IDYES, ...). `owner` may be null.
int MessageBoxById(HWND owner, UINT textId, UINT captionId, UINT style);

// Reports that there was no memory for what `owner`, which may be null, had begun. Takes none itself.
void ReportMissingMemory(HWND owner);

// Shows a text under the applet's name, in MessageBoxA's `style`; returns the button pressed. `owner` may be
// null.
int MessageBoxText(HWND owner, const char* text, UINT style);
