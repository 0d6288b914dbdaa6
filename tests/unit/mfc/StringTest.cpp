// CString.
#include "resource.h"

#include <afxwin.h>
#include <gtest/gtest.h>
#include <string>

// So that failures show the text.
void PrintTo(const CString& string, std::ostream* out);

void PrintTo(const CString& string, std::ostream* out)
{
    *out << '"' << static_cast<LPCSTR>(string) << '"';
}

namespace {

TEST(String, IsBuiltFromTextPartOfATextAndCharacters)
{
    EXPECT_EQ(CString(), "");
    EXPECT_EQ(CString("text"), "text");
    EXPECT_EQ(CString(LPCSTR{nullptr}), "");
    EXPECT_EQ(CString("text", 2), "te");
    EXPECT_EQ(CString('x', 3), "xxx");
}

TEST(String, IsAssigned)
{
    CString string("old");
    string = "new";
    EXPECT_EQ(string, "new");
    string = 'c';
    EXPECT_EQ(string, "c");
    string = CString("copy");
    EXPECT_EQ(string, "copy");
}

TEST(String, MayBeAssignedAPartOfItself)
{
    CString string("abcdef");
    string = static_cast<LPCSTR>(string) + 3;
    EXPECT_EQ(string, "def");
    string += string;
    EXPECT_EQ(string, "defdef");
}

TEST(String, IsJoined)
{
    CString string("a");
    string += "b";
    string += 'c';
    string += CString("d");

    EXPECT_EQ(string, "abcd");
    EXPECT_EQ(CString("a") + CString("b"), "ab");
    EXPECT_EQ(CString("a") + "b", "ab");
    EXPECT_EQ("a" + CString("b"), "ab");
    EXPECT_EQ(CString("a") + 'b', "ab");
    EXPECT_EQ('a' + CString("b"), "ab");
}

TEST(String, ComparesByCaseOrWithout)
{
    const CString string("Lanmannt");

    EXPECT_LT(string.Compare("Lanmannu"), 0);
    EXPECT_GT(string.Compare("Lanmanns"), 0);
    EXPECT_EQ(string.Compare("Lanmannt"), 0);
    EXPECT_NE(string.Compare("LANMANNT"), 0);
    EXPECT_TRUE(string == "Lanmannt");
    EXPECT_TRUE("Lanmannt" == string);
    EXPECT_TRUE(string != "other");
    EXPECT_TRUE(CString("a") < CString("b"));
    EXPECT_TRUE(CString("a") < "b");
    EXPECT_TRUE("a" < CString("b"));
    EXPECT_FALSE(CString("b") < "a");
}

TEST(String, TellsItsLengthAndCharacters)
{
    CString string("abc");

    EXPECT_EQ(string.GetLength(), 3);
    EXPECT_FALSE(string.IsEmpty());
    EXPECT_EQ(string.GetAt(0), 'a');
    EXPECT_EQ(string[2], 'c');
    string.SetAt(1, 'X');
    EXPECT_EQ(string, "aXc");
    string.Empty();
    EXPECT_TRUE(string.IsEmpty());
    EXPECT_EQ(string.GetLength(), 0);
}

TEST(String, GivesPartsWithinItsEnds)
{
    const CString string("abcdef");

    EXPECT_EQ(string.Left(2), "ab");
    EXPECT_EQ(string.Left(99), "abcdef");
    EXPECT_EQ(string.Left(-1), "");
    EXPECT_EQ(string.Right(2), "ef");
    EXPECT_EQ(string.Right(99), "abcdef");
    EXPECT_EQ(string.Right(0), "");
    EXPECT_EQ(string.Mid(2), "cdef");
    EXPECT_EQ(string.Mid(2, 2), "cd");
    EXPECT_EQ(string.Mid(4, 99), "ef");
    EXPECT_EQ(string.Mid(99), "");
}

TEST(String, FindsCharactersAndTexts)
{
    const CString path("C:\\scripts\\LOGIN.BAT");

    EXPECT_EQ(path.Find('\\'), 2);
    EXPECT_EQ(path.Find('\\', 3), 10);
    EXPECT_EQ(path.Find("LOGIN"), 11);
    EXPECT_EQ(path.Find("login"), -1);
    EXPECT_EQ(path.Find('?'), -1);
    EXPECT_EQ(path.Find("BAT", 18), -1);
    EXPECT_EQ(CString("ab").Find("abc"), -1);
    EXPECT_EQ(CString("ab").Find(""), 0);
    EXPECT_EQ(CString().Find('a'), -1);
}

TEST(String, TakesNoHalfOfADoubleByteCharacterForABackslash)
{
    if (GetACP() != 932) {
        // The pair 0x95 0x5C is one character only in the Japanese code page;
        // elsewhere its second byte counts.
        EXPECT_EQ(CString("\x95\x5C").Find('\\'), 1);
        return;
    }
    EXPECT_EQ(CString("\x95\x5C").Find('\\'), -1);
}

TEST(String, ChangesToSmallLetters)
{
    CString string("MyApp.EXE 1");
    string.MakeLower();
    EXPECT_EQ(string, "myapp.exe 1");
}

TEST(String, LosesWhiteSpaceAtItsEnds)
{
    CString string(" \t a b \r\n");
    string.TrimLeft();
    EXPECT_EQ(string, "a b \r\n");
    string.TrimRight();
    EXPECT_EQ(string, "a b");

    CString blank("   ");
    blank.TrimRight();
    EXPECT_EQ(blank, "");
}

TEST(String, IsFormatted)
{
    CString string;
    string.Format("%s %d %08X", "text", -5, 0xBEEFU);
    EXPECT_EQ(string, "text -5 0000BEEF");
    string.Format("%s again", static_cast<LPCSTR>(string));
    EXPECT_EQ(string, "text -5 0000BEEF again");
    string.Format("%*d", 5000, 1);
    EXPECT_EQ(string.GetLength(), 5000);
}

TEST(String, IsFormattedByAnEntryOfTheStringTable)
{
    CString string;
    string.Format(IDS_FORMAT, 3, "five");
    EXPECT_EQ(string, "3 of five");
    EXPECT_THROW(string.Format(IDS_ABSENT, 3), CNotSupportedException);
}

TEST(String, IsLoadedFromTheStringTable)
{
    CString string;
    EXPECT_TRUE(string.LoadString(IDS_GREETING));
    EXPECT_EQ(string, "Hello");
    EXPECT_TRUE(string.LoadString(IDS_LONG));
    EXPECT_EQ(string.GetLength(), 300);
    EXPECT_EQ(string.Right(10), "0123456789");
}

// In a code page in which it takes two bytes a character may be where the text is cut.
TEST(String, IsLoadedWhole)
{
    char character[3] = "";
    WideCharToMultiByte(CP_ACP, 0, L"\u3042", 1, character, 2, nullptr, nullptr);
    CString expected;
    for (int i = 0; i < 300; ++i)
        expected += character;
    CString string;
    EXPECT_TRUE(string.LoadString(IDS_LONG_WIDE));
    EXPECT_EQ(string, expected) << string.GetLength();
}

TEST(String, IsEmptyAfterLoadingAnAbsentEntry)
{
    CString string("old");
    EXPECT_FALSE(string.LoadString(IDS_ABSENT));
    EXPECT_EQ(string, "");
}

TEST(String, LendsItsBuffer)
{
    CString string("ab");
    LPSTR buffer = string.GetBuffer(10);
    EXPECT_STREQ(buffer, "ab");
    lstrcpyA(buffer, "12345678");
    string.ReleaseBuffer();
    EXPECT_EQ(string, "12345678");
    EXPECT_EQ(string.GetLength(), 8);

    lstrcpyA(string.GetBuffer(20), "xyz");
    string.ReleaseBuffer(2);
    EXPECT_EQ(string, "xy");
}

TEST(String, FillsInAPromptsPlaces)
{
    CString prompt;
    AfxFormatString1(prompt, IDS_TWICE, "64");
    EXPECT_EQ(prompt, "64 and 64");
    AfxFormatString1(prompt, IDS_GREETING, "64");
    EXPECT_EQ(prompt, "Hello");
    AfxFormatString1(prompt, IDS_ABSENT, "64");
    EXPECT_EQ(prompt, "");
}

} // namespace
