// The filtered edit control.
#include "sysaccess/ParsedEdit.h"

#include <string_view>

namespace {

constexpr UINT simpleBeep = 0xFFFFFFFF;

// Not isdigit and isalpha: their answers depend on the locale.
bool IsDigit(UINT character)
{
    return character >= '0' && character <= '9';
}

bool IsLetter(UINT character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

WORD KindOf(UINT character)
{
    if (character < ' ')
        return CC_ANY;
    if (IsDigit(character))
        return CC_DIGIT;
    return IsLetter(character) ? CC_LETTER : CC_OTHER;
}

} // namespace

BEGIN_MESSAGE_MAP(CParsedEdit, CEdit)
    ON_WM_CHAR()
END_MESSAGE_MAP()

BOOL CParsedEdit::SubclassFiltered(UINT controlId, CWnd* parent, WORD style, LPCSTR extraChars)
{
    m_style = style;
    m_extraChars = extraChars;
    return SubclassDlgItem(controlId, parent);
}

void CParsedEdit::RejectKey()
{
    const WPARAM notification = MAKEWPARAM(GetDlgCtrlID(), EN_KEYREFUSED);
    const LRESULT answer =
        GetParent()->SendMessage(WM_COMMAND, notification, reinterpret_cast<LPARAM>(m_hWnd));
    if (answer != -1)
        MessageBeep(simpleBeep);
}

void CParsedEdit::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    if ((m_style & ClassOf(nChar)) != 0)
        CEdit::OnChar(nChar, nRepCnt, nFlags);
    else
        RejectKey();
}

WORD CParsedEdit::ClassOf(UINT character) const
{
    const WORD kind = KindOf(character);
    return IsListed(character) ? static_cast<WORD>(kind | CC_LISTED) : kind;
}

// Every field's list is of ASCII characters, whose Unicode numbers are their codes.
bool CParsedEdit::IsListed(UINT character) const
{
    const std::string_view listed(m_extraChars, static_cast<std::size_t>(m_extraChars.GetLength()));
    return character < 0x80 && listed.find(static_cast<char>(character)) != std::string_view::npos;
}
