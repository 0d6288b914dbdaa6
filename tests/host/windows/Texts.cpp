// Texts of an ANSI code page in which each byte is the character of its number.
#include "Import.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
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

BOOL IsLeadByte(BYTE /*byte*/)
{
    return FALSE;
}

const standin::Import<decltype(IsDBCSLeadByte)> leadByteImport("IsDBCSLeadByte", IsLeadByte);

} // namespace

int MultiByteToWideChar(UINT /*codePage*/, DWORD /*flags*/, LPCSTR text, int length, LPWSTR wide, int size)
{
    return Transfer(text, length < 0 ? static_cast<int>(std::strlen(text)) + 1 : length, wide, size, Widened);
}

int WideCharToMultiByte(UINT /*codePage*/, DWORD /*flags*/, LPCWSTR wide, int length, LPSTR text, int size,
                        LPCSTR /*substitute*/, LPBOOL /*isSubstituted*/)
{
    return Transfer(wide, length < 0 ? static_cast<int>(std::wcslen(wide)) + 1 : length, text, size,
                    Narrowed);
}

BOOL IsDBCSLeadByte(BYTE byte)
{
    return leadByteImport(byte);
}
