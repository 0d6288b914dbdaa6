// Environment variables in texts, such as "%windir%".
#pragma once

#include <span>
#include <string>

// Copies `text` to the buffer, with references to environment variables replaced. False when Windows refuses,
// or when the result does not fit with its terminating zero; what the buffer holds then is of no use.
[[nodiscard]] bool ExpandEnvironment(const char* text, std::span<char> buffer);

// Replaces the references in a text of any length, which stays as it is when that fails or there is no memory
// for the result.
void ExpandEnvironment(std::string& text);
