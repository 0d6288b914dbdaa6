// CString, the library's 8-bit text. Used by everything that shows, reads or stores text.
#pragma once

#include "afx.h"

#include <cstdarg>
#include <string>

// Text in the ANSI code page. Searches step over double-byte characters whole, so that the second byte of one
// is never taken for a backslash.
class CString
{
  public:
    CString() = default;
    // A null pointer counts as the empty text.
    CString(LPCSTR lpsz); // NOLINT(google-explicit-constructor): assignment from text is the point
    CString(LPCSTR lpch, int nLength);
    explicit CString(char ch, int nRepeat = 1);

    // Assign and append; a null pointer counts as the empty text.
    CString& operator=(LPCSTR lpsz);
    CString& operator=(char ch);
    CString& operator+=(LPCSTR lpsz);
    CString& operator+=(const CString& string);
    CString& operator+=(char ch);

    // The text, valid until the object changes. In printf-style arguments it must be asked for by a cast.
    operator LPCSTR() const { return m_text.c_str(); } // NOLINT(google-explicit-constructor)

    // Lengths and positions are in bytes.
    [[nodiscard]] int GetLength() const { return static_cast<int>(m_text.size()); }
    [[nodiscard]] BOOL IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    [[nodiscard]] char GetAt(int nIndex) const { return m_text[static_cast<size_t>(nIndex)]; }
    [[nodiscard]] char operator[](int nIndex) const { return GetAt(nIndex); }
    void SetAt(int nIndex, char ch) { m_text[static_cast<size_t>(nIndex)] = ch; }

    // Negative, zero or positive as this text comes before, equals or comes after the other.
    [[nodiscard]] int Compare(LPCSTR lpsz) const;

    // Parts of the text; what reaches beyond its ends is left out.
    [[nodiscard]] CString Mid(int nFirst) const;
    [[nodiscard]] CString Mid(int nFirst, int nCount) const;
    [[nodiscard]] CString Left(int nCount) const;
    [[nodiscard]] CString Right(int nCount) const;

    // The position of the first match, -1 when there is none.
    [[nodiscard]] int Find(char ch, int nStart = 0) const;
    [[nodiscard]] int Find(LPCSTR lpszSub, int nStart = 0) const;

    // In the ANSI code page's own rules.
    void MakeLower();

    // Take white space off an end.
    void TrimLeft();
    void TrimRight();

    // printf-style; the second form takes the format from the string table and throws CNotSupportedException
    // when it is not there.
    void Format(LPCSTR lpszFormat, ...);
    void Format(UINT nFormatID, ...);
    void FormatV(LPCSTR lpszFormat, va_list argList);

    // The string-table entry of the current resource module. FALSE, and the empty text, when there is none.
    BOOL LoadString(UINT nID);

    // A buffer for at least nMinBufLength characters and a zero; ReleaseBuffer must follow any change to it.
    [[nodiscard]] LPSTR GetBuffer(int nMinBufLength);
    // Takes over what was written: nNewLength characters, or up to the first zero when it is -1.
    void ReleaseBuffer(int nNewLength = -1);

  private:
    [[nodiscard]] size_t NextCharacter(size_t position) const;

    std::string m_text;
};

// One text after the other.
[[nodiscard]] CString operator+(const CString& left, const CString& right);
[[nodiscard]] CString operator+(const CString& left, LPCSTR right);
[[nodiscard]] CString operator+(LPCSTR left, const CString& right);
[[nodiscard]] CString operator+(const CString& left, char right);
[[nodiscard]] CString operator+(char left, const CString& right);

// Byte by byte, as Compare.
[[nodiscard]] inline bool operator==(const CString& left, const CString& right)
{
    return left.Compare(right) == 0;
}
[[nodiscard]] inline bool operator==(const CString& left, LPCSTR right)
{
    return left.Compare(right) == 0;
}
[[nodiscard]] inline bool operator<(const CString& left, const CString& right)
{
    return left.Compare(right) < 0;
}
[[nodiscard]] inline bool operator<(const CString& left, LPCSTR right)
{
    return left.Compare(right) < 0;
}
[[nodiscard]] inline bool operator<(LPCSTR left, const CString& right)
{
    return right.Compare(left) > 0;
}

// lpsz1 replaces every "%1" of the string-table entry nID; rString becomes empty when there is no such entry.
void AfxFormatString1(CString& rString, UINT nID, LPCSTR lpsz1);
