// Texts of the string table without a window: for programs that have no part of the windowing system.
#pragma once

#include <string>
#include <windows.h>

// The text with this id in the string table of the running program, in the language of the user if the
// program has it and in the ANSI code page; empty when there is none.
[[nodiscard]] std::string ProgramText(UINT textId);
