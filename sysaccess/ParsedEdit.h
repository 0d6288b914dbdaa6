// An edit control that refuses, key by key, what does not belong into its field. For the fields of the pages
// that hold names and paths.
#pragma once

#include <afxwin.h>

// Kinds of characters, as a field accepts them and as a key has them.
enum CharacterClass : WORD
{
    CC_DIGIT = 0x0001,
    CC_LETTER = 0x0002, // A to Z and a to z
    CC_OTHER = 0x0800,  // whatever is none of the others; all codes from 128 up
    CC_LISTED = 0x8000, // the field's own characters, whatever else they are
    CC_ANY = 0xFFFF,    // what a control key (code below 32) has, and a field that accepts every key
};

// Notification code: the user has pressed a key that the field does not accept. The parent may answer -1 to
// keep the computer from beeping.
constexpr UINT EN_KEYREFUSED = 0x8000;

// Takes over an edit control of a dialog. Only typing is filtered: pasted text, and text that the program
// sets, is not.
class CParsedEdit : public CEdit
{
  public:
    // From now on accepts the CharacterClass bits of `style`; `extraChars` are those of CC_LISTED. Then takes
    // over the control; FALSE when the parent has none with this id, which leaves the filter in force on the
    // control that the object holds already.
    BOOL SubclassFiltered(UINT controlId, CWnd* parent, WORD style, LPCSTR extraChars);

    // A key was refused: notifies the parent, and beeps unless the parent does not want that.
    virtual void RejectKey();

  protected:
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);

    DECLARE_MESSAGE_MAP()

  private:
    // The CharacterClass bits of a character, in Unicode.
    [[nodiscard]] WORD ClassOf(UINT character) const;
    [[nodiscard]] bool IsListed(UINT character) const;

    WORD m_style = 0;
    CString m_extraChars;
};
