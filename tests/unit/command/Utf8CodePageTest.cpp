// Conversions where the system's ANSI code page is UTF-8, as an administrator may have set it.
#include "command/CodePage.h"
#include "imports/ImportHook.h"
#include "support/ThisProgram.h"

#include <gtest/gtest.h>
#include <optional>

namespace {

using support::thisProgram;

// For UTF-8 Windows allows no flag but WC_ERR_INVALID_CHARS, which is not used here.
int ConvertAsUtf8(decltype(WideCharToMultiByte)* original, DWORD flags, LPCWSTR wide, int length, LPSTR text,
                  int size)
{
    if (flags == 0)
        return original(CP_UTF8, 0, wide, length, text, size, nullptr, nullptr);
    SetLastError(ERROR_INVALID_FLAGS);
    return 0;
}

TEST(Utf8CodePage, ExpressesEveryText)
{
    const auto narrow = support::HookImport<decltype(WideCharToMultiByte)>(
        thisProgram, "WideCharToMultiByte",
        [](auto original, UINT, DWORD flags, LPCWSTR wide, int length, LPSTR text, int size, LPCCH, LPBOOL) {
            return ConvertAsUtf8(original, flags, wide, length, text, size);
        });
    const auto widen = support::HookImport<decltype(MultiByteToWideChar)>(
        thisProgram, "MultiByteToWideChar",
        [](auto original, UINT, DWORD flags, LPCCH text, int length, LPWSTR wide, int size) {
            return original(CP_UTF8, flags, text, length, wide, size);
        });
    const std::string text = "Caf\xC3\xA9 \xE8\xA1\xA8 \xF0\x9F\x98\x80";
    EXPECT_EQ(FromUtf8(text), text);
    EXPECT_EQ(ToUtf8(text), text);
}

} // namespace
