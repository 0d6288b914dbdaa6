// CString on std::string.
#include "afxstr.h"
#include "afxwin.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

CString::CString(LPCSTR lpsz) : m_text(lpsz == nullptr ? "" : lpsz) {}

CString::CString(LPCSTR lpch, int nLength) : m_text(lpch, static_cast<size_t>(nLength)) {}

CString::CString(char ch, int nRepeat) : m_text(static_cast<size_t>(nRepeat), ch) {}

CString& CString::operator=(LPCSTR lpsz)
{
    // Through a copy: lpsz may point into this very text.
    m_text = std::string(lpsz == nullptr ? "" : lpsz);
    return *this;
}

CString& CString::operator=(char ch)
{
    m_text.assign(1, ch);
    return *this;
}

CString& CString::operator+=(LPCSTR lpsz)
{
    m_text += std::string(lpsz == nullptr ? "" : lpsz);
    return *this;
}

CString& CString::operator+=(const CString& string)
{
    m_text += string.m_text;
    return *this;
}

CString& CString::operator+=(char ch)
{
    m_text += ch;
    return *this;
}

int CString::Compare(LPCSTR lpsz) const
{
    return std::strcmp(m_text.c_str(), lpsz == nullptr ? "" : lpsz);
}

CString CString::Mid(int nFirst) const
{
    return Mid(nFirst, GetLength());
}

CString CString::Mid(int nFirst, int nCount) const
{
    const int first = std::clamp(nFirst, 0, GetLength());
    const int count = std::clamp(nCount, 0, GetLength() - first);
    return {m_text.c_str() + first, count};
}

CString CString::Left(int nCount) const
{
    return Mid(0, nCount);
}

CString CString::Right(int nCount) const
{
    return Mid(GetLength() - std::clamp(nCount, 0, GetLength()));
}

size_t CString::NextCharacter(size_t position) const
{
    const bool isPair = IsDBCSLeadByte(static_cast<BYTE>(m_text[position])) && position + 1 < m_text.size();
    return position + (isPair ? 2 : 1);
}

int CString::Find(char ch, int nStart) const
{
    const char sub[] = {ch, '\0'};
    return Find(sub, nStart);
}

int CString::Find(LPCSTR lpszSub, int nStart) const
{
    const size_t length = std::strlen(lpszSub);
    const auto start = static_cast<size_t>(std::max(nStart, 0));
    for (size_t position = 0; position + length <= m_text.size(); position = NextCharacter(position)) {
        if (position >= start && m_text.compare(position, length, lpszSub) == 0)
            return static_cast<int>(position);
    }
    return -1;
}

void CString::MakeLower()
{
    CharLowerBuffA(m_text.data(), static_cast<DWORD>(m_text.size()));
}

static bool IsSpace(char ch)
{
    return std::isspace(static_cast<unsigned char>(ch)) != 0;
}

void CString::TrimLeft()
{
    m_text.erase(m_text.begin(), std::find_if_not(m_text.begin(), m_text.end(), IsSpace));
}

void CString::TrimRight()
{
    m_text.erase(std::find_if_not(m_text.rbegin(), m_text.rend(), IsSpace).base(), m_text.end());
}

void CString::Format(LPCSTR lpszFormat, ...)
{
    va_list arguments;
    va_start(arguments, lpszFormat);
    FormatV(lpszFormat, arguments);
    va_end(arguments);
}

void CString::Format(UINT nFormatID, ...)
{
    CString format;
    if (!format.LoadString(nFormatID))
        AfxThrowNotSupportedException();
    va_list arguments;
    va_start(arguments, nFormatID);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(LPCSTR lpszFormat, va_list argList)
{
    va_list counted;
    va_copy(counted, argList);
    const int length = std::max(_vscprintf(lpszFormat, counted), 0);
    va_end(counted);
    // Formatted apart: the arguments may point into this very text.
    std::string text(static_cast<size_t>(length) + 1, '\0');
    _vsnprintf(text.data(), text.size(), lpszFormat, argList);
    text.resize(static_cast<size_t>(length));
    m_text = std::move(text);
}

BOOL CString::LoadString(UINT nID)
{
    // An entry that leaves no room for another character and the zero may have been cut off, so it is asked
    // for again with a larger buffer.
    constexpr size_t longestCharacter = 4; // bytes, in UTF-8
    std::string text(128, '\0');
    int length = 0;
    do {
        text.resize(text.size() * 2);
        length = ::LoadStringA(AfxGetResourceHandle(), nID, text.data(), static_cast<int>(text.size()));
    } while (static_cast<size_t>(length) + longestCharacter >= text.size());
    text.resize(static_cast<size_t>(length));
    m_text = std::move(text);
    return length > 0;
}

LPSTR CString::GetBuffer(int nMinBufLength)
{
    m_text.resize(std::max(m_text.size(), static_cast<size_t>(std::max(nMinBufLength, 0))));
    return m_text.data();
}

void CString::ReleaseBuffer(int nNewLength)
{
    m_text.resize(nNewLength < 0 ? std::strlen(m_text.c_str()) : static_cast<size_t>(nNewLength));
}

template <typename Left, typename Right>
static CString Join(const Left& left, const Right& right)
{
    CString sum(left);
    sum += right;
    return sum;
}

CString operator+(const CString& left, const CString& right)
{
    return Join(left, right);
}

CString operator+(const CString& left, LPCSTR right)
{
    return Join(left, right);
}

CString operator+(LPCSTR left, const CString& right)
{
    return Join(left, right);
}

CString operator+(const CString& left, char right)
{
    return Join(left, right);
}

CString operator+(char left, const CString& right)
{
    return Join(left, right);
}

void AfxFormatString1(CString& rString, UINT nID, LPCSTR lpsz1)
{
    CString format;
    format.LoadString(nID);
    CString result;
    int start = 0;
    for (int mark = format.Find("%1"); mark >= 0; mark = format.Find("%1", start)) {
        result += format.Mid(start, mark - start) + lpsz1;
        start = mark + 2;
    }
    rString = result + format.Mid(start);
}
