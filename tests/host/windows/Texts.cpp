// Texts of an ANSI code page in which each byte is the character of its number, and of UTF-8.
#include "Import.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <cwchar>
#include <functional>
#include <string>
#include <string_view>
#include <windows.h>

namespace {

int Refuse()
{
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return 0;
}

WCHAR Widened(char character)
{
    return static_cast<unsigned char>(character);
}

char Narrowed(WCHAR character)
{
    return character < 0x100 ? static_cast<char>(character) : '?';
}

// Converts `count` characters; only counts without room for any.
template <typename From, typename To, typename Convert>
int Transfer(const From* from, int count, To* to, int size, Convert convert)
{
    if (size == 0)
        return count;
    std::transform(from, from + std::min(count, size), to, convert);
    return count <= size ? count : Refuse();
}

WCHAR Lower(WCHAR character)
{
    const bool isCapital = (character >= L'A' && character <= L'Z') ||
                           (character >= 0xC0 && character <= 0xDE && character != 0xD7);
    return isCapital ? character + 0x20 : character;
}

// UTF-16 in UTF-8, where wide characters have room for more: those of two units stay two, as on Windows.
std::wstring FromUtf8(std::string_view text)
{
    std::wstring wide;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i++]);
        const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        std::uint32_t code = more == 0 ? lead : lead & (0x3FU >> more);
        for (int k = 0; k < more && i < text.size(); ++k)
            code = (code << 6) | (static_cast<unsigned char>(text[i++]) & 0x3FU);
        if (code >= 0x10000) {
            wide.push_back(static_cast<WCHAR>(0xD800 + ((code - 0x10000) >> 10)));
            code = 0xDC00 + ((code - 0x10000) & 0x3FF);
        }
        wide.push_back(static_cast<WCHAR>(code));
    }
    return wide;
}

bool IsBetween(WCHAR character, WCHAR first, WCHAR last)
{
    return character >= first && character <= last;
}

std::string ToUtf8(std::wstring_view wide)
{
    std::string text;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        auto code = static_cast<std::uint32_t>(wide[i]);
        const bool isPair = IsBetween(wide[i], 0xD800, 0xDBFF) && i + 1 < wide.size() &&
                            IsBetween(wide[i + 1], 0xDC00, 0xDFFF);
        if (isPair)
            code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<std::uint32_t>(wide[++i]) - 0xDC00);
        else if (IsBetween(wide[i], 0xD800, 0xDFFF))
            code = 0xFFFD; // half a pair is no character
        const int more = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        constexpr std::array<unsigned, 4> leads = {0, 0xC0, 0xE0, 0xF0};
        text.push_back(static_cast<char>(leads[static_cast<std::size_t>(more)] | (code >> (6 * more))));
        for (int k = more - 1; k >= 0; --k)
            text.push_back(static_cast<char>(0x80 | ((code >> (6 * k)) & 0x3F)));
    }
    return text;
}

BOOL IsLeadByte(BYTE /*byte*/)
{
    return FALSE;
}

const standin::Import<decltype(IsDBCSLeadByte)> leadByteImport("IsDBCSLeadByte", IsLeadByte);

} // namespace

int MultiByteToWideChar(UINT codePage, DWORD /*flags*/, LPCSTR text, int length, LPWSTR wide, int size)
{
    const int count = length < 0 ? static_cast<int>(std::strlen(text)) + 1 : length;
    if (codePage == CP_ACP)
        return Transfer(text, count, wide, size, Widened);
    const std::wstring characters = FromUtf8({text, static_cast<std::size_t>(count)});
    return Transfer(characters.data(), static_cast<int>(characters.size()), wide, size, std::identity());
}

int WideCharToMultiByte(UINT codePage, DWORD /*flags*/, LPCWSTR wide, int length, LPSTR text, int size,
                        LPCSTR /*substitute*/, LPBOOL /*isSubstituted*/)
{
    const int count = length < 0 ? static_cast<int>(std::wcslen(wide)) + 1 : length;
    if (codePage == CP_ACP)
        return Transfer(wide, count, text, size, Narrowed);
    const std::string bytes = ToUtf8({wide, static_cast<std::size_t>(count)});
    return Transfer(bytes.data(), static_cast<int>(bytes.size()), text, size, std::identity());
}

int LCMapStringW(DWORD /*locale*/, DWORD /*flags*/, LPCWSTR text, int length, LPWSTR mapped, int size)
{
    return Transfer(text, length, mapped, size, Lower);
}

// Character by character, as Windows does it for names without signs that it passes over.
int CompareStringW(DWORD /*locale*/, DWORD /*flags*/, LPCWSTR first, int firstLength, LPCWSTR second,
                   int secondLength)
{
    std::wstring left(first, static_cast<std::size_t>(firstLength));
    std::wstring right(second, static_cast<std::size_t>(secondLength));
    std::transform(left.begin(), left.end(), left.begin(), Lower);
    std::transform(right.begin(), right.end(), right.begin(), Lower);
    const int order = left.compare(right);
    return order == 0 ? 2 : CSTR_LESS_THAN + (order < 0 ? 0 : 2);
}

HRSRC FindResourceA(HMODULE /*module*/, LPCSTR /*name*/, LPCSTR /*type*/)
{
    return nullptr;
}

HGLOBAL LoadResource(HMODULE /*module*/, HRSRC /*resource*/)
{
    return nullptr;
}

LPVOID LockResource(HGLOBAL /*loaded*/)
{
    return nullptr;
}

DWORD SizeofResource(HMODULE /*module*/, HRSRC /*resource*/)
{
    return 0;
}

BOOL IsDBCSLeadByte(BYTE byte)
{
    return leadByteImport(byte);
}
