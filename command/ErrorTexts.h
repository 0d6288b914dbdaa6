// The texts of the applet's message boxes as errors of the command line.
#pragma once

#include <string>
#include <windows.h>

// The text with this id as one line in UTF-8; its number when the program lacks it.
[[nodiscard]] std::string ErrorText(UINT textId);
// The same with the name of a service, in the ANSI code page, in the place for it.
[[nodiscard]] std::string ServiceErrorText(UINT textId, const std::string& displayName);
