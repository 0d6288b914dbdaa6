// The applet's help file and the HTML Help library that shows it.
#pragma once

#include <windows.h>

// Path of the help file: the one for Japanese on a system whose default language is Japanese. Worked out by
// UpdateHelpFilePath; the address never changes.
[[nodiscard]] const char* HelpFilePath();

// Works the path out anew from the WINDIR variable and the system's default language.
void UpdateHelpFilePath();

// Shows one topic of the help file, a path inside it such as "html\\vtnm7wh1.htm". The HTML Help library is
// loaded on first use and stays loaded; once it could not be found, it is not looked for again. Returns the
// help window, or null.
HWND ShowHelpTopic(const char* topic);
