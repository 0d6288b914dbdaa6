// How the dialogs are laid out, looked at in the real windows: nothing overlaps or sticks out, frames frame,
// labels come before what they name.
#include "resources/resource.h"
#include "tests/unit/resources/DialogWindow.h"
#include "tests/unit/resources/ExpectedTexts.h"
#include "tests/unit/resources/ResourceReader.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

namespace {

bool Contains(const RECT& outer, const RECT& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool Overlap(const RECT& one, const RECT& other)
{
    RECT common;
    return IntersectRect(&common, &one, &other) != FALSE;
}

// A frame may hold another control whole; nothing else may share a pixel. A hidden edit is put where it is
// needed.
bool MayBeTogether(const DialogControl& one, const DialogControl& other)
{
    if (!one.IsVisible() || !other.IsVisible() || !Overlap(one.place, other.place))
        return true;
    return (one.IsGroupBox() && Contains(one.place, other.place)) ||
           (other.IsGroupBox() && Contains(other.place, one.place));
}

bool TakesTheFocus(const DialogControl& control)
{
    return !control.IsStatic() && !control.IsGroupBox();
}

void ForEachDialog(const std::function<void(const DialogWindow&)>& check)
{
    for (const ExpectedDialog& expected : ExpectedDialogs())
        ForEachLook(expected.id, check);
}

// Of all dialogs but the please-wait dialog, whose measures stand apart.
void ForEachPage(const std::function<void(const DialogWindow&)>& check)
{
    ForEachDialog([&](const DialogWindow& dialog) {
        if (dialog.Controls().size() > 1)
            check(dialog);
    });
}

TEST(DialogLayout, LetsNoTwoControlsOverlap)
{
    ForEachDialog([](const DialogWindow& dialog) {
        const auto& controls = dialog.Controls();
        for (size_t i = 0; i < controls.size(); ++i) {
            for (size_t j = i + 1; j < controls.size(); ++j)
                EXPECT_TRUE(MayBeTogether(controls[i], controls[j]))
                    << controls[i].id << " and " << controls[j].id;
        }
    });
}

TEST(DialogLayout, KeepsSevenUnitsFreeAtTheEdges)
{
    ForEachPage([](const DialogWindow& dialog) {
        const ExpectedDialog& expected = ExpectedDialogOf(dialog.Id());
        RECT inner = dialog.ToPixels({7, 7, expected.width - 7, expected.height - 7});
        // Place and size of a control are rounded to pixels one by one.
        InflateRect(&inner, 1, 1);
        for (const DialogControl& control : dialog.Controls())
            EXPECT_TRUE(Contains(inner, control.place)) << control.id;
    });
}

// Controls that the Tab key and the arrow keys reach, in that order; without those that are hidden.
std::vector<DialogControl> TabOrder(const DialogWindow& dialog)
{
    std::vector<DialogControl> stops;
    for (const DialogControl& control : dialog.Controls()) {
        if (TakesTheFocus(control) && control.IsVisible())
            stops.push_back(control);
    }
    return stops;
}

TEST(DialogLayout, KeepsFourUnitsBetweenNeighbours)
{
    ForEachPage([](const DialogWindow& dialog) {
        const RECT gap = dialog.ToPixels({0, 0, 4, 4});
        const std::vector<DialogControl> controls = TabOrder(dialog);
        for (size_t i = 0; i < controls.size(); ++i) {
            RECT claim = controls[i].place;
            InflateRect(&claim, gap.right - 1, gap.bottom - 1);
            for (size_t j = i + 1; j < controls.size(); ++j)
                EXPECT_FALSE(Overlap(claim, controls[j].place))
                    << controls[i].id << " and " << controls[j].id;
        }
    });
}

// Units, by kind of button; 0 for a frame, which is as high as what it holds.
int UsualHeight(const DialogControl& button)
{
    switch (button.style & BS_TYPEMASK) {
    case BS_GROUPBOX:
        return 0;
    case BS_AUTOCHECKBOX:
    case BS_AUTORADIOBUTTON:
        return 10;
    default:
        return 14;
    }
}

TEST(DialogLayout, GivesButtonsAndBoxesTheirUsualHeight)
{
    ForEachPage([](const DialogWindow& dialog) {
        for (const DialogControl& control : dialog.Controls()) {
            const int height = control.windowClass == "Button" ? UsualHeight(control) : 0;
            if (height != 0) {
                EXPECT_EQ(control.place.bottom - control.place.top, dialog.ToPixels({0, 0, 0, height}).bottom)
                    << control.id;
            }
        }
    });
}

TEST(DialogLayout, LeadsTheTabKeyToTheRightOrDown)
{
    ForEachPage([](const DialogWindow& dialog) {
        const std::vector<DialogControl> stops = TabOrder(dialog);
        for (size_t i = 1; i < stops.size(); ++i) {
            const RECT& before = stops[i - 1].place;
            const RECT& after = stops[i].place;
            EXPECT_TRUE(after.left >= before.right || after.top >= before.bottom) << stops[i].id;
        }
    });
}

TEST(DialogLayout, FramesEverythingOnAPage)
{
    ForEachPage([](const DialogWindow& dialog) {
        const DialogControl& frame = dialog.Controls().front();
        ASSERT_TRUE(frame.IsGroupBox());
        const RECT margin = dialog.ToPixels({0, 0, 4, 4});
        RECT inner = frame.place;
        InflateRect(&inner, -margin.right, -margin.bottom);
        for (const DialogControl& control : dialog.Controls()) {
            if (&control != &frame) {
                EXPECT_TRUE(Contains(inner, control.place)) << control.id;
            }
        }
    });
}

// Lowest edge of what lies within a frame.
LONG BottomOfContents(const DialogWindow& dialog, const DialogControl& frame)
{
    LONG bottom = frame.place.top;
    for (const DialogControl& control : dialog.Controls()) {
        if (control.window != frame.window && Contains(frame.place, control.place))
            bottom = std::max(bottom, control.place.bottom);
    }
    return bottom;
}

TEST(DialogLayout, EndsFramesSevenUnitsBelowWhatTheyHold)
{
    ForEachPage([](const DialogWindow& dialog) {
        const LONG margin = dialog.ToPixels({0, 0, 0, 7}).bottom;
        for (const DialogControl& control : dialog.Controls()) {
            if (control.IsGroupBox()) {
                // Place and size of a control are rounded to pixels one by one.
                EXPECT_NEAR(control.place.bottom, BottomOfContents(dialog, control) + margin, 1)
                    << control.id;
            }
        }
    });
}

// Screen readers take the text before a control for its name. A button has its own; the edit that is hidden
// until it lies in the list is part of that.
bool NeedsALabel(const DialogControl& control)
{
    return TakesTheFocus(control) && control.windowClass != "Button" && control.IsVisible();
}

TEST(DialogLayout, PutsALabelRightBeforeEachEditAndList)
{
    ForEachPage([](const DialogWindow& dialog) {
        const auto& controls = dialog.Controls();
        for (size_t i = 1; i < controls.size(); ++i) {
            if (NeedsALabel(controls[i])) {
                EXPECT_TRUE(controls[i - 1].IsStatic() && !controls[i - 1].text.empty()) << controls[i].id;
            }
        }
    });
}

TEST(DialogLayout, PutsTheLabelBeforeItsControl)
{
    ForEachPage([](const DialogWindow& dialog) {
        const auto& controls = dialog.Controls();
        for (size_t i = 0; i < controls.size(); ++i) {
            if (!controls[i].IsStatic() || AccessKey(controls[i]) == 0)
                continue;
            ASSERT_LT(i + 1, controls.size());
            EXPECT_TRUE(TakesTheFocus(controls[i + 1]) && (controls[i + 1].style & WS_TABSTOP))
                << controls[i].id;
        }
    });
}

TEST(DialogLayout, PlacesTheLabelAboveOrLeftOfItsControl)
{
    ForEachPage([](const DialogWindow& dialog) {
        const auto& controls = dialog.Controls();
        for (size_t i = 0; i + 1 < controls.size(); ++i) {
            if (!controls[i].IsStatic() || !TakesTheFocus(controls[i + 1]))
                continue;
            const RECT& label = controls[i].place;
            const RECT& named = controls[i + 1].place;
            EXPECT_TRUE(label.bottom <= named.top || label.right <= named.left) << controls[i].id;
        }
    });
}

TEST(DialogLayout, MakesEveryControlReachableByTab)
{
    ForEachDialog([](const DialogWindow& dialog) {
        for (const DialogControl& control : dialog.Controls()) {
            const bool laterRadio = control.id > IDC_PROCMON_NONE && control.id <= IDC_PROCMON_START_STOP;
            if (TakesTheFocus(control) && !laterRadio) {
                EXPECT_TRUE(control.style & WS_TABSTOP) << control.id;
            }
        }
    });
}

TEST(DialogLayout, EndsTheRadioGroupWithTheAddButton)
{
    const DialogWindow dialog(IDD_PROCMON, kEnglish);
    EXPECT_TRUE(dialog.Control(IDC_PROCMON_NONE).style & WS_GROUP);
    EXPECT_FALSE(dialog.Control(IDC_PROCMON_START).style & WS_GROUP);
    EXPECT_FALSE(dialog.Control(IDC_PROCMON_STOP).style & WS_GROUP);
    EXPECT_FALSE(dialog.Control(IDC_PROCMON_START_STOP).style & WS_GROUP);
    EXPECT_TRUE(dialog.Control(IDC_PROCMON_ADD).style & WS_GROUP);
}

TEST(DialogLayout, MakesTheAgentListsAlikeAndPutsEachButtonBelowTheListThatItEmpties)
{
    ForEachLook(IDD_SERVICES, [](const DialogWindow& dialog) {
        const RECT active = dialog.Control(IDC_SERVICES_ACTIVE_LIST).place;
        const RECT inactive = dialog.Control(IDC_SERVICES_INACTIVE_LIST).place;
        const RECT remove = dialog.Control(IDC_SERVICES_REMOVE).place;
        const RECT add = dialog.Control(IDC_SERVICES_ADD).place;
        EXPECT_EQ(active.right - active.left, inactive.right - inactive.left);
        EXPECT_EQ(active.bottom, inactive.bottom);
        EXPECT_GE(remove.top, active.bottom);
        EXPECT_NEAR(remove.right, active.right, 1);
        EXPECT_GE(add.top, inactive.bottom);
        EXPECT_EQ(add.left, inactive.left);
    });
}

TEST(DialogLayout, AlignsTheOptionsWithTheProcessListAndTheButtonsBelow)
{
    ForEachLook(IDD_PROCMON, [](const DialogWindow& dialog) {
        const RECT list = dialog.Control(IDC_PROCMON_LIST).place;
        const RECT options = dialog.Control(IDC_PROCMON_OPTION_GROUP).place;
        const RECT add = dialog.Control(IDC_PROCMON_ADD).place;
        const RECT remove = dialog.Control(IDC_PROCMON_DELETE).place;
        // The line of a frame runs through the middle of its text.
        EXPECT_NEAR(options.top + dialog.ToPixels({0, 0, 0, 4}).bottom, list.top, 1);
        EXPECT_NEAR(add.top - options.bottom, dialog.ToPixels({0, 0, 0, 7}).bottom, 1);
        EXPECT_EQ(add.left, options.left);
        EXPECT_NEAR(remove.right, options.right, 1);
        EXPECT_NEAR(remove.bottom, list.bottom, 1);
    });
}

TEST(DialogLayout, CentresThePleaseWaitText)
{
    for (const LANGID language : {kEnglish, kJapanese}) {
        const DialogWindow dialog(IDD_PLEASE_WAIT, language);
        const RECT expected = dialog.ToPixels({7, 12, 7 + 142, 12 + 42});
        EXPECT_TRUE(EqualRect(&dialog.Control(IDC_PLEASE_WAIT_TEXT).place, &expected))
            << LanguageName(language);
    }
}

} // namespace
