// Between the document's UTF-8 and the 8-bit texts of the settings, which are in the system's ANSI code page.
#pragma once

#include <optional>
#include <string>

// Every text of the settings as UTF-8. Bytes that are no characters become what the system puts in their
// place.
[[nodiscard]] std::string ToUtf8(const std::string& text);

// The reverse. Nothing when the code page cannot express the text: no character becomes a similar one.
[[nodiscard]] std::optional<std::string> FromUtf8(const std::string& text);

// The same in lower case, as the Process Monitor page writes names.
[[nodiscard]] std::optional<std::string> LowerFromUtf8(const std::string& text);

// UTF-8 as Windows' wide functions take it, and back.
[[nodiscard]] std::wstring Widen(const std::string& text);
[[nodiscard]] std::string Narrow(const std::wstring& text);

// Whether a sorted list box puts the first text, in the ANSI code page, before the second.
[[nodiscard]] bool IsListedBefore(const std::string& first, const std::string& second);
