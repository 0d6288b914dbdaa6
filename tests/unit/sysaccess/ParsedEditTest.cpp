// The filtered edit control, with keys typed into a real edit.
#include "sysaccess/ParsedEdit.h"

#include "support/Clipboard.h"
#include "support/ImportHook.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace {

constexpr UINT fieldId = 1024;

// The dialog around the field: keeps the refusals that it is told of.
class CParent : public CWnd
{
  public:
    CParent() { CreateEx(0, "STATIC", "Parent", WS_OVERLAPPEDWINDOW, CRect(0, 0, 300, 100), nullptr, 0); }

    int m_refusals = 0;
    UINT m_refusingId = 0;
    LPARAM m_refusingWindow = 0;
    LRESULT m_answer = 0;

  protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_COMMAND || HIWORD(wParam) != EN_KEYREFUSED)
            return CWnd::WindowProc(message, wParam, lParam);
        ++m_refusals;
        m_refusingId = LOWORD(wParam);
        m_refusingWindow = lParam;
        return m_answer;
    }
};

class ParsedEdit : public testing::Test
{
  protected:
    ParsedEdit()
    {
        m_control =
            CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0, 0, 200, 20,
                            m_parent.m_hWnd, reinterpret_cast<HMENU>(UINT_PTR{fieldId}), nullptr, nullptr);
    }

    BOOL Filter(WORD style, const char* extraChars = "")
    {
        return m_edit.SubclassFiltered(fieldId, &m_parent, style, extraChars);
    }

    // A key's character as it comes out of the message queue.
    void Type(UINT character) const
    {
        PostMessageA(m_control, WM_CHAR, character, 1);
        HandleMessages();
    }
    void Type(const std::string& text) const
    {
        for (const char character : text)
            Type(static_cast<BYTE>(character));
    }
    void PressKey(WORD key) const
    {
        PostMessageA(m_control, WM_KEYDOWN, key, 1);
        HandleMessages();
    }
    static void HandleMessages()
    {
        MSG message{};
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }

    [[nodiscard]] std::string Text() const
    {
        CString text;
        m_edit.GetWindowText(text);
        return {text, static_cast<std::size_t>(text.GetLength())};
    }

    CParent m_parent;
    HWND m_control;
    CParsedEdit m_edit;
};

// --- what each field accepts

struct Field
{
    const char* name;
    WORD style;
    const char* extraChars;
};

void PrintTo(const Field& field, std::ostream* out)
{
    *out << field.name;
}

const Field fields[] = {
    {"UserName", 0x8003, "`!@#$%^&*()_-{}'"},
    {"Password", 0xFFFF, ""},
    {"ComputerName", 0x8003, "\\`!@#$%^&*()_-{}'"},
    {"LoginScript", 0x8003, "`!@#$%()_-{}~' :\\/."},
    {"ServerRole", 0xFFFF, ""},
};

class EachField : public ParsedEdit, public testing::WithParamInterface<Field>
{
  protected:
    // Control keys pass everywhere; else a field takes everything, or letters, digits and its own characters.
    static bool Accepts(UINT character)
    {
        const std::string accepted =
            std::string("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz") +
            GetParam().extraChars;
        return character < 32 || GetParam().style == 0xFFFF ||
               accepted.find(static_cast<char>(character)) != std::string::npos;
    }
};

TEST_P(EachField, TakesItsOwnCharactersAndRefusesAllOthers)
{
    Filter(GetParam().style, GetParam().extraChars);
    for (UINT character = 0; character < 256; ++character) {
        m_edit.SetWindowText("");
        m_parent.m_refusals = 0;
        Type(character);
        EXPECT_EQ(m_parent.m_refusals, Accepts(character) ? 0 : 1) << character;
    }
}

TEST_P(EachField, ShowsWhatItTakesAndNothingElse)
{
    Filter(GetParam().style, GetParam().extraChars);
    for (UINT character = 32; character < 256; ++character) {
        const bool isShown = Accepts(character) && character != 127; // an edit shows no Delete
        m_edit.SetWindowText("");
        Type(character);
        EXPECT_EQ(Text(), isShown ? std::string(1, static_cast<char>(character)) : "") << character;
    }
}

TEST_P(EachField, TakesPastedText)
{
    Filter(GetParam().style, GetParam().extraChars);
    support::CopyToClipboard(m_parent.m_hWnd, "a b\"c;\xE4");
    m_edit.SendMessage(WM_PASTE);
    EXPECT_EQ(Text(), "a b\"c;\xE4");
    EXPECT_EQ(m_parent.m_refusals, 0);
}

TEST_P(EachField, TakesTextThatTheProgramPutsInPlaceOfTheSelection)
{
    Filter(GetParam().style, GetParam().extraChars);
    m_edit.SendMessage(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>("a b\"c;\xE4"));
    EXPECT_EQ(Text(), "a b\"c;\xE4");
    EXPECT_EQ(m_parent.m_refusals, 0);
}

TEST_P(EachField, TakesTextThatTheProgramSets)
{
    Filter(GetParam().style, GetParam().extraChars);
    m_edit.SetWindowText("a b\"c;");
    EXPECT_EQ(Text(), "a b\"c;");
    EXPECT_EQ(m_parent.m_refusals, 0);
}

INSTANTIATE_TEST_SUITE_P(Fields, EachField, testing::ValuesIn(fields),
                         [](const auto& tested) { return tested.param.name; });

// --- single classes

TEST_F(ParsedEdit, TakesDigitsAloneWhenItIsToldSo)
{
    Filter(CC_DIGIT);
    Type("a0-9z");
    EXPECT_EQ(Text(), "09");
}

TEST_F(ParsedEdit, TakesLettersAloneWhenItIsToldSo)
{
    Filter(CC_LETTER);
    Type("@AZ[`az{5");
    EXPECT_EQ(Text(), "AZaz");
}

TEST_F(ParsedEdit, TakesWhatIsNeitherLetterNorDigitWhenItIsToldSo)
{
    Filter(CC_OTHER);
    Type("a 1/:@[`{~");
    EXPECT_EQ(Text(), " /:@[`{~");
}

TEST_F(ParsedEdit, TakesALetterThatIsListedAlthoughItTakesNoLetters)
{
    Filter(CC_LISTED, "x7");
    Type("xy78");
    EXPECT_EQ(Text(), "x7");
}

TEST_F(ParsedEdit, DoesNotCountTheListWhenItIsNotToldTo)
{
    Filter(CC_DIGIT, "x");
    Type("x7");
    EXPECT_EQ(Text(), "7");
}

TEST_F(ParsedEdit, TakesNothingBeforeItIsToldWhat)
{
    m_edit.SubclassWindow(m_control);
    Type("a1 \b");
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(m_parent.m_refusals, 4);
}

TEST_F(ParsedEdit, TakesACodeBeyondOneByteForNoLetter)
{
    Filter(CC_DIGIT | CC_LETTER | CC_LISTED, "_");
    SendMessageW(m_control, WM_CHAR, 0x100 + 'a', 1);
    SendMessageW(m_control, WM_CHAR, 0x100 + '_', 1);
    EXPECT_EQ(m_parent.m_refusals, 2);
}

// --- keys

TEST_F(ParsedEdit, LetsTheUserCorrectWithBackspace)
{
    Filter(0x8003, "_");
    Type("ab_1\b");
    EXPECT_EQ(Text(), "ab_");
    EXPECT_EQ(m_parent.m_refusals, 0);
}

TEST_F(ParsedEdit, LetsTheUserCopyAndPasteWithKeys)
{
    Filter(CC_DIGIT);
    m_edit.SetWindowText("a b");
    m_edit.SetSel(0, -1);
    Type("\x03\x16\x16");
    EXPECT_EQ(Text(), "a ba b");
    EXPECT_EQ(m_parent.m_refusals, 0);
}

TEST_F(ParsedEdit, RefusesTheCharacterOfAPressedKey)
{
    Filter(0x8003, "_");
    PressKey(VK_SPACE);
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(m_parent.m_refusals, 1);
}

TEST_F(ParsedEdit, LeavesKeysWithoutACharacterAlone)
{
    Filter(CC_DIGIT);
    m_edit.SetWindowText("a b");
    m_edit.SetSel(0, 0);
    PressKey(VK_DELETE);
    EXPECT_EQ(Text(), " b");
    EXPECT_EQ(m_parent.m_refusals, 0);
}

// --- refusing

class RefusedKey : public ParsedEdit
{
  protected:
    // Types a refused key and returns the beeps that it made.
    std::vector<UINT> Beeps()
    {
        std::vector<UINT> beeps;
        auto hook = support::HookImport<decltype(MessageBeep)>(GetModuleHandleA(nullptr), "MessageBeep",
                                                               [&](auto, UINT sound) {
                                                                   beeps.push_back(sound);
                                                                   return TRUE;
                                                               });
        Filter(CC_DIGIT);
        Type('a');
        return beeps;
    }
};

TEST_F(RefusedKey, IsToldToTheParentWithTheControl)
{
    Filter(CC_DIGIT);
    Type('a');
    EXPECT_EQ(m_parent.m_refusals, 1);
    EXPECT_EQ(m_parent.m_refusingId, fieldId);
    EXPECT_EQ(m_parent.m_refusingWindow, reinterpret_cast<LPARAM>(m_control));
}

TEST_F(RefusedKey, MakesTheSimpleBeep)
{
    EXPECT_EQ(Beeps(), std::vector<UINT>{0xFFFFFFFF});
    m_parent.m_answer = 1;
    EXPECT_EQ(Beeps(), std::vector<UINT>{0xFFFFFFFF});
}

TEST_F(RefusedKey, MakesNoBeepWhenTheParentAnswersMinusOne)
{
    m_parent.m_answer = -1;
    EXPECT_EQ(Beeps(), std::vector<UINT>());
    EXPECT_EQ(m_parent.m_refusals, 1);
}

TEST_F(RefusedKey, IsTheDerivedClasssBusinessWhenItWantsThat)
{
    struct CQuietEdit : CParsedEdit
    {
        void RejectKey() override { ++m_rejections; }
        int m_rejections = 0;
    };
    CQuietEdit quiet;
    quiet.SubclassFiltered(fieldId, &m_parent, CC_DIGIT, "");
    Type("a1b");
    EXPECT_EQ(quiet.m_rejections, 2);
    EXPECT_EQ(m_parent.m_refusals, 0);
}

// --- taking a control over

TEST_F(ParsedEdit, TellsWhetherTheParentHasTheControl)
{
    CParsedEdit other;
    EXPECT_FALSE(other.SubclassFiltered(fieldId + 1, &m_parent, CC_ANY, ""));
    EXPECT_TRUE(Filter(CC_ANY));
}

TEST_F(ParsedEdit, MayTakeOverTheControlThatItHolds)
{
    m_edit.SubclassWindow(m_control);
    EXPECT_TRUE(Filter(CC_DIGIT));
    Type("a1");
    EXPECT_EQ(Text(), "1");
}

TEST_F(ParsedEdit, FiltersTheControlThatItHoldsWhenTheOtherIsMissing)
{
    m_edit.SubclassWindow(m_control);
    EXPECT_FALSE(m_edit.SubclassFiltered(fieldId + 1, &m_parent, 0x8003, ":\\"));
    Type("c:\\x y");
    EXPECT_EQ(Text(), "c:\\xy");
}

// In a code page of UTF-8 Windows refuses some conversions of single characters.
TEST_F(ParsedEdit, TakesItsListedCharactersWhateverTheCodePageConverts)
{
    const auto refuse = [](UINT, DWORD, LPCWCH, int, LPSTR, int, LPCCH, LPBOOL) -> int { return 0; };
    const support::ReplacedImport conversion(GetModuleHandleA(nullptr), "WideCharToMultiByte",
                                             static_cast<decltype(WideCharToMultiByte)*>(refuse));
    Filter(CC_LETTER | CC_LISTED, ":\\.");
    Type("c:\\a.b");
    EXPECT_EQ(Text(), "c:\\a.b");
}

} // namespace
