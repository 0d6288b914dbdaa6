// The dialogs: every control with its number, kind and English text, and the same dialog in Japanese.
#include "resources/resource.h"
#include "tests/unit/resources/DialogWindow.h"
#include "tests/unit/resources/ExpectedTexts.h"
#include "tests/unit/resources/ResourceReader.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

namespace {

// Styles that have to be exactly as expected, set or clear; the others are only looked at where they are
// expected.
DWORD ExactStyles(const std::string& windowClass)
{
    if (windowClass == "Button")
        return BS_TYPEMASK | WS_DISABLED;
    if (windowClass == "ListBox")
        return LBS_SORT | LBS_NOTIFY | LBS_USETABSTOPS | WS_DISABLED;
    if (windowClass == "Edit")
        return ES_PASSWORD | ES_UPPERCASE | ES_LOWERCASE | ES_MULTILINE | ES_NUMBER | ES_READONLY |
               WS_DISABLED;
    return windowClass == "ComboBox" ? CBS_DROPDOWNLIST | CBS_SORT | WS_DISABLED : SS_TYPEMASK | WS_DISABLED;
}

void ExpectControl(const DialogControl& control, const ExpectedControl& expected)
{
    EXPECT_EQ(control.id, expected.id);
    EXPECT_EQ(control.windowClass, expected.windowClass);
    const DWORD looked = ExactStyles(expected.windowClass) | expected.styles;
    EXPECT_EQ(control.style & looked, expected.styles);
    EXPECT_EQ(control.IsVisible(), control.id != IDC_PROCMON_NEW_NAME);
}

std::vector<wchar_t> AccessKeys(const DialogWindow& dialog)
{
    std::vector<wchar_t> keys;
    for (const DialogControl& control : dialog.Controls())
        keys.push_back(AccessKey(control));
    return keys;
}

// Access keys that more than one control of a dialog has.
std::string RepeatedKeys(const DialogWindow& dialog)
{
    std::map<wchar_t, int> uses;
    for (const wchar_t key : AccessKeys(dialog))
        ++uses[key];
    std::string repeated;
    for (const auto& [key, count] : uses) {
        if (key != 0 && count > 1)
            repeated += static_cast<char>(key);
    }
    return repeated;
}

using DialogAndLanguage = std::tuple<int, LANGID>;

class EachDialog : public testing::TestWithParam<DialogAndLanguage>
{
  protected:
    EachDialog() : m_expected(ExpectedDialogOf(Id())), m_dialog(Id(), Language()) {}

    static int Id() { return std::get<0>(GetParam()); }
    static LANGID Language() { return std::get<1>(GetParam()); }

    const ExpectedDialog& m_expected;
    DialogWindow m_dialog;
};

INSTANTIATE_TEST_SUITE_P(Dialogs, EachDialog,
                         testing::Combine(testing::Values(IDD_SERVICES, IDD_EVENT, IDD_SNMP, IDD_DESKTOP,
                                                          IDD_BOARD, IDD_PLEASE_WAIT, IDD_PROCMON,
                                                          IDD_STORAGE),
                                          testing::Values(kEnglish, kJapanese)),
                         [](const auto& run) {
                             return LanguageName(std::get<1>(run.param)) +
                                    std::to_string(std::get<0>(run.param));
                         });

TEST(Dialogs, AreTheOnesOfTheTableInBothLanguages)
{
    std::set<int> expected;
    for (const ExpectedDialog& dialog : ExpectedDialogs())
        expected.insert(dialog.id);

    // RT_DIALOG
    EXPECT_EQ(ResourceIds(MAKEINTRESOURCEW(5), kEnglish), expected);
    EXPECT_EQ(ResourceIds(MAKEINTRESOURCEW(5), kJapanese), expected);
}

TEST_P(EachDialog, HasTheExpectedControlsInTheirOrder)
{
    ASSERT_EQ(m_dialog.Controls().size(), m_expected.controls.size());
    for (size_t i = 0; i < m_expected.controls.size(); ++i) {
        SCOPED_TRACE(m_expected.controls[i].id);
        ExpectControl(m_dialog.Controls()[i], m_expected.controls[i]);
    }
}

TEST_P(EachDialog, HasTheExpectedSize)
{
    const RECT units = m_dialog.ToPixels({0, 0, m_expected.width, m_expected.height});
    RECT client;
    GetClientRect(m_dialog.Handle(), &client);
    EXPECT_EQ(client.right, units.right);
    EXPECT_EQ(client.bottom, units.bottom);
}

TEST_P(EachDialog, HasTheExpectedKindOfWindow)
{
    const DWORD looked = WS_POPUP | WS_CHILD | WS_VISIBLE | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
    EXPECT_EQ(m_dialog.Style() & looked, m_expected.styles);
}

// A sheet is drawn in the size that its system's own dialogs have, and so its pages must be, or they do not
// fill it.
TEST_P(EachDialog, UsesTheShellsFontInTheSizeOfTheLanguagesDialogs)
{
    LOGFONTW font = {};
    const auto handle = reinterpret_cast<HGDIOBJ>(SendMessageW(m_dialog.Handle(), WM_GETFONT, 0, 0));
    GetObjectW(handle, sizeof font, &font);
    const HDC screen = GetDC(nullptr);
    const int points = Language() == kJapanese ? 9 : 8;
    const int height = -MulDiv(points, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);

    EXPECT_EQ(ToUtf8(font.lfFaceName), "MS Shell Dlg");
    EXPECT_EQ(font.lfHeight, height);
}

TEST_P(EachDialog, HasTheSameControlsWithAccessKeysInBothLanguages)
{
    const std::vector<wchar_t> english = AccessKeys(DialogWindow(Id(), kEnglish));
    const std::vector<wchar_t> keys = AccessKeys(m_dialog);
    ASSERT_EQ(keys.size(), english.size());
    for (size_t i = 0; i < keys.size(); ++i)
        EXPECT_EQ(keys[i] != 0, english[i] != 0) << m_dialog.Controls()[i].id;
}

TEST_P(EachDialog, HasNoAccessKeyTwice)
{
    // The English texts of the Storage page are kept as they are: each begins with Disable.
    const bool storageInEnglish = GetParam() == DialogAndLanguage(IDD_STORAGE, kEnglish);
    EXPECT_EQ(RepeatedKeys(m_dialog), storageInEnglish ? "D" : "");
}

TEST_P(EachDialog, HasNoTextThatItsCodePageLoses)
{
    for (const DialogControl& control : m_dialog.Controls()) {
        BOOL lost = FALSE;
        char bytes[1024];
        WideCharToMultiByte(Language() == kJapanese ? 932 : 20127, WC_NO_BEST_FIT_CHARS, control.text.c_str(),
                            -1, bytes, sizeof bytes, nullptr, &lost);
        EXPECT_FALSE(lost) << control.id;
    }
}

TEST(EnglishDialogs, HaveTheExpectedTextsToTheLetter)
{
    for (const ExpectedDialog& expected : ExpectedDialogs()) {
        const DialogWindow dialog(expected.id, kEnglish);
        wchar_t caption[64] = {};
        GetWindowTextW(dialog.Handle(), caption, 64);
        EXPECT_EQ(ToUtf8(caption), expected.caption);
        ASSERT_EQ(dialog.Controls().size(), expected.controls.size());
        for (size_t i = 0; i < expected.controls.size(); ++i)
            EXPECT_EQ(ToUtf8(dialog.Controls()[i].text), expected.controls[i].text) << expected.id;
    }
}

// No keyboard has a key for a kana or an ideograph.
TEST(JapaneseDialogs, PutALatinAccessKeyInParenthesesBehindTheText)
{
    for (const ExpectedDialog& expected : ExpectedDialogs()) {
        const DialogWindow dialog(expected.id, kJapanese);
        for (const DialogControl& control : dialog.Controls()) {
            const wchar_t key = AccessKey(control);
            if (key == 0)
                continue;
            EXPECT_TRUE(key >= L'A' && key <= L'Z') << expected.id << ' ' << control.id;
            EXPECT_NE(control.text.find(std::wstring{L'(', L'&', key, L')'}), std::wstring::npos)
                << expected.id << ' ' << control.id;
        }
    }
}

TEST(ProcessMonitorDialog, KeepsTheKeyOfTheAddButtonApartFromDeleteInBothItsFaces)
{
    for (const LANGID language : {kEnglish, kJapanese}) {
        const DialogWindow dialog(IDD_PROCMON, language);
        const wchar_t deleteKey = AccessKey(dialog.Control(IDC_PROCMON_DELETE));
        EXPECT_EQ(dialog.Control(IDC_PROCMON_ADD).text, FindString(IDS_PROCMON_ADD, language));
        EXPECT_NE(AccessKey(FindString(IDS_PROCMON_ENTER, language).value_or(L"")), deleteKey);
    }
}

TEST(ProcessMonitorDialog, NamesItsRadioButtonsLikeTheOptionsOfTheList)
{
    for (const LANGID language : {kEnglish, kJapanese}) {
        const DialogWindow dialog(IDD_PROCMON, language);
        for (int option = 0; option < 4; ++option) {
            std::wstring text = dialog.Control(IDC_PROCMON_NONE + option).text;
            if (const size_t doubled = text.find(L"&&"); doubled != std::wstring::npos)
                text.erase(doubled, 1);
            EXPECT_EQ(text, FindString(static_cast<UINT>(IDS_PROCMON_OPTION_NONE + option), language));
        }
    }
}

} // namespace
