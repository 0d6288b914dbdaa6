// Every text has room in its control, measured in the dialog's own font, and so has what is put there at run
// time. That rests on the fonts of the system: on Windows, whose fonts have other widths, a text may need
// more room than it has under Wine.
#include "resources/resource.h"
#include "tests/unit/resources/DialogWindow.h"
#include "tests/unit/resources/ExpectedTexts.h"
#include "tests/unit/resources/ResourceReader.h"

#include <gtest/gtest.h>

namespace {

// The list of the Process Monitor page puts the option at this place, in dialog units.
constexpr int kOptionTabStop = 80;

SIZE SizeOf(const RECT& place)
{
    return {place.right - place.left, place.bottom - place.top};
}

// Pixels beside the text that a button needs: the box of a check box or radio button and the gap behind it,
// or the edges of a push button or of the gap in a frame.
int ButtonExtra(const DialogControl& control)
{
    const DWORD type = control.style & BS_TYPEMASK;
    if (type == BS_AUTOCHECKBOX || type == BS_AUTORADIOBUTTON)
        return GetSystemMetrics(SM_CXMENUCHECK) + 6;
    return type == BS_GROUPBOX ? 20 : 12;
}

SIZE NeededSize(const DialogWindow& dialog, const DialogControl& control, const std::wstring& text)
{
    if (control.windowClass == "Button") {
        const SIZE size = dialog.Measure(text);
        return {size.cx + dialog.Scale(ButtonExtra(control)), size.cy};
    }
    const UINT prefix = (control.style & SS_NOPREFIX) != 0 ? DT_NOPREFIX : 0U;
    return dialog.Measure(text, static_cast<int>(SizeOf(control.place).cx), prefix | DT_EXPANDTABS);
}

testing::AssertionResult Fits(const DialogWindow& dialog, const DialogControl& control,
                              const std::wstring& text)
{
    const SIZE needed = NeededSize(dialog, control, text);
    const SIZE room = SizeOf(control.place);
    if (needed.cx <= room.cx && needed.cy <= room.cy)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << '"' << ToUtf8(text) << "\" needs " << needed.cx << 'x' << needed.cy
                                       << " pixels and has " << room.cx << 'x' << room.cy;
}

bool ShowsItsText(const DialogControl& control)
{
    return control.IsStatic() || control.windowClass == "Button";
}

// The string with the name of a service in it.
std::wstring Announcement(UINT id, LANGID language, const std::wstring& service)
{
    std::wstring text = FindString(id, language).value_or(L"");
    return text.replace(text.find(L"%s"), 2, service);
}

// Pixels of a control's width that its text has, when it keeps `extra` and a scroll bar for itself.
int RoomBesideScrollBar(const DialogWindow& dialog, int id, int extra)
{
    return SizeOf(dialog.Control(id).place).cx - dialog.Scale(GetSystemMetrics(SM_CXVSCROLL) + extra);
}

// The table's strings from `first` to `last`, each of which has to fit into `room` pixels.
void ExpectStringsFit(const DialogWindow& dialog, UINT first, UINT last, int room)
{
    for (UINT id = first; id <= last; ++id)
        EXPECT_LE(dialog.Measure(FindString(id, dialog.Language()).value_or(L"")).cx, room) << id;
}

// Without Japanese glyphs the measures below would be those of empty boxes.
TEST(DialogFont, HasJapaneseGlyphs)
{
    const DialogWindow dialog(IDD_STORAGE, kJapanese);
    const SIZE ideographs = dialog.Measure(L"管理管理管理管理管理");
    EXPECT_GE(ideographs.cx, 10 * 10) << "MS Shell Dlg is not linked to a font with Japanese characters";
}

TEST(DialogTextFit, LeavesNoTextCutOff)
{
    for (const ExpectedDialog& expected : ExpectedDialogs()) {
        ForEachLook(expected.id, [](const DialogWindow& dialog) {
            for (const DialogControl& control : dialog.Controls()) {
                if (ShowsItsText(control)) {
                    EXPECT_TRUE(Fits(dialog, control, control.text)) << control.id;
                }
            }
        });
    }
}

TEST(DialogTextFit, GivesTheAddButtonRoomForBothItsFaces)
{
    ForEachLook(IDD_PROCMON, [](const DialogWindow& dialog) {
        for (const UINT face : {UINT{IDS_PROCMON_ADD}, UINT{IDS_PROCMON_ENTER}})
            EXPECT_TRUE(Fits(dialog, dialog.Control(IDC_PROCMON_ADD),
                             FindString(face, dialog.Language()).value_or(L"")));
    });
}

TEST(DialogTextFit, LongServiceNamesFitThePleaseWaitText)
{
    ForEachLook(IDD_PLEASE_WAIT, [](const DialogWindow& dialog) {
        const DialogControl& text = dialog.Control(IDC_PLEASE_WAIT_TEXT);
        const LANGID language = dialog.Language();
        const std::wstring service = L"Norvale Management Agents Host";
        EXPECT_TRUE(Fits(dialog, text, Announcement(IDS_STARTING, language, service)));
        EXPECT_TRUE(Fits(dialog, text, Announcement(IDS_STOPPING, language, service)));
        EXPECT_TRUE(Fits(dialog, text, FindString(IDS_BOARD_RESETTING, language).value_or(L"")));
    });
}

TEST(DialogTextFit, GivesTheAgentListsRoomForALongName)
{
    ForEachLook(IDD_SERVICES, [](const DialogWindow& dialog) {
        const SIZE name = dialog.Measure(L"Host Operating System Agent");
        for (const int list : {IDC_SERVICES_ACTIVE_LIST, IDC_SERVICES_INACTIVE_LIST})
            EXPECT_LE(name.cx, RoomBesideScrollBar(dialog, list, 6)) << list;
    });
}

TEST(DialogTextFit, GivesTheIntervalListRoomForEveryInterval)
{
    ForEachLook(IDD_SNMP, [](const DialogWindow& dialog) {
        ExpectStringsFit(dialog, IDS_INTERVAL_5_SECONDS, IDS_INTERVAL_60_MINUTES,
                         RoomBesideScrollBar(dialog, IDC_SNMP_INTERVAL, 12));
    });
}

TEST(DialogTextFit, GivesTheProcessListRoomForEveryOption)
{
    ForEachLook(IDD_PROCMON, [](const DialogWindow& dialog) {
        const int tabStop = static_cast<int>(dialog.ToPixels({0, 0, kOptionTabStop, 0}).right);
        ExpectStringsFit(dialog, IDS_PROCMON_OPTION_NONE, IDS_PROCMON_OPTION_START_STOP,
                         RoomBesideScrollBar(dialog, IDC_PROCMON_LIST, 6) - tabStop);
    });
}

} // namespace
