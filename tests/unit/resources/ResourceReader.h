// Reads the resources of the test program in one language, without the fallbacks of LoadString and
// CreateDialog.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>
#include <windows.h>

inline constexpr LANGID kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
inline constexpr LANGID kJapanese = MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT);

// The language's name for test output.
[[nodiscard]] const char* LanguageName(LANGID language);

// Bytes of a resource in exactly this language; empty when there is none. `type` and `name` may be numbers.
[[nodiscard]] std::string_view FindResourceBytes(const wchar_t* type, const wchar_t* name, LANGID language);

// A string of the table in exactly this language; nothing when it is not there (Windows stores an absent
// string as an empty one).
[[nodiscard]] std::optional<std::wstring> FindString(UINT id, LANGID language);

// Numbers of all strings of a language.
[[nodiscard]] std::set<UINT> StringIds(LANGID language);

// Numbers of all resources of a type that a language has.
[[nodiscard]] std::set<int> ResourceIds(const wchar_t* type, LANGID language);

[[nodiscard]] std::string ToUtf8(std::wstring_view text);
[[nodiscard]] std::wstring FromUtf8(std::string_view text);
