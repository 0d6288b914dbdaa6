// Conversions by Windows' own tables.
#include "command/CodePage.h"

#include <windows.h>

namespace {

int LengthOf(const auto& text)
{
    return static_cast<int>(text.size());
}

std::wstring WideFrom(UINT codePage, const std::string& text)
{
    std::wstring wide(text.size(), L'\0'); // no character takes fewer bytes than wide ones
    const int length =
        MultiByteToWideChar(codePage, 0, text.data(), LengthOf(text), wide.data(), LengthOf(wide));
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

std::string NarrowTo(UINT codePage, const std::wstring& wide)
{
    constexpr std::size_t longestCharacter = 4; // bytes
    std::string text(wide.size() * longestCharacter, '\0');
    const int length = WideCharToMultiByte(codePage, 0, wide.data(), LengthOf(wide), text.data(),
                                           LengthOf(text), nullptr, nullptr);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::optional<std::string> ExactlyNarrowed(const std::wstring& wide)
{
    std::string text = NarrowTo(CP_ACP, wide);
    if (WideFrom(CP_ACP, text) != wide) // Windows puts similar characters for those that are not there
        return std::nullopt;
    return text;
}

std::wstring LowerCase(const std::wstring& text)
{
    std::wstring lower(text.size(), L'\0');
    LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_LOWERCASE, text.data(), LengthOf(text), lower.data(),
                 LengthOf(lower));
    return lower;
}

} // namespace

std::wstring Widen(const std::string& text)
{
    return WideFrom(CP_UTF8, text);
}

std::string Narrow(const std::wstring& text)
{
    return NarrowTo(CP_UTF8, text);
}

std::string ToUtf8(const std::string& text)
{
    return Narrow(WideFrom(CP_ACP, text));
}

std::optional<std::string> FromUtf8(const std::string& text)
{
    return ExactlyNarrowed(Widen(text));
}

std::optional<std::string> LowerFromUtf8(const std::string& text)
{
    return ExactlyNarrowed(LowerCase(Widen(text)));
}

bool IsListedBefore(const std::string& first, const std::string& second)
{
    const std::wstring left = WideFrom(CP_ACP, first);
    const std::wstring right = WideFrom(CP_ACP, second);
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, left.data(), LengthOf(left), right.data(),
                          LengthOf(right)) == CSTR_LESS_THAN;
}
