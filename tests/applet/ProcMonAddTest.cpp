// Adding a name on the Process Monitor page: the in-place edit and every way to end it.
#include "applet/ProcMonPageTest.h"

namespace {

using namespace std::string_literals;

class ProcMonAdd : public ProcMonPageTest
{
  protected:
    // The page with one running process, and a name typed into the in-place edit.
    void OpenAndType(const std::string& name)
    {
        m_tasks.names = {"running.exe"};
        Open();
        PressAdd();
        Type(name);
    }

    void ExpectAdded(support::Location where = support::Location::current())
    {
        support::ExpectEqual(Rows{"myapp.exe\tNone", "running.exe\tNone"}, Items(), "items", where);
        support::ExpectEqual("&Add"s, Page().Text(IDC_PROCMON_ADD), "Add button", where);
        support::ExpectEqual(0, Page().Selection(IDC_PROCMON_LIST), "selection", where);
        support::ExpectEqual("None"s, CheckedOption(), "option", where);
        support::ExpectEqual(true, Page().IsEnabled(IDC_PROCMON_DELETE), "Delete", where);
        support::ExpectEqual(true, InPlaceEdit() == nullptr, "edit is closed", where);
    }

    // Brings another window to the front while a name is being typed: the name is added, the other window
    // stays in front, and OK stores it.
    void ExpectSwitchingAwayAddsTheName(support::Location where = support::Location::current())
    {
        const HWND other = CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                           nullptr, nullptr, nullptr);
        SetForegroundWindow(other);
        support::ExpectEqual(true, support::WaitUntil([&] { return InPlaceEdit() == nullptr; }),
                             "edit is closed in time", where);
        m_host.Thread().Settle();
        support::ExpectEqual(true, GetForegroundWindow() == other, "the other window is in front", where);
        DestroyWindow(other);
        m_host.Thread().Settle();
        ExpectAdded(where);
        m_host.PressOk();
        ExpectStored("\x80myapp.exe\0"s, where);
    }

    static constexpr char typedName[] = "  MyApp.EXE ";
};

// --- opening

TEST_F(ProcMonAdd, OpensAnEditOverANewItem)
{
    OpenAndType("");
    EXPECT_EQ(Items(), (Rows{"\tNone", "running.exe\tNone"}));
    EXPECT_EQ(Page().Text(IDC_PROCMON_ADD), "&Enter");
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), 0);
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_NONE));
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_OPTION_GROUP));
    ASSERT_NE(InPlaceEdit(), nullptr);
    EXPECT_TRUE(IsWindowVisible(InPlaceEdit()));
    EXPECT_EQ(m_host.Thread().Focus(), InPlaceEdit());
    m_host.PressCancel();
}

TEST_F(ProcMonAdd, TheEditCoversTwoFifthsOfTheItem)
{
    OpenAndType("");
    const HWND list = Page().Control(IDC_PROCMON_LIST);
    RECT item{};
    support::SendWithin(list, LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&item));
    RECT edit{};
    GetWindowRect(InPlaceEdit(), &edit);
    MapWindowPoints(HWND_DESKTOP, list, reinterpret_cast<LPPOINT>(&edit), 2);
    EXPECT_EQ(edit.left, item.left);
    EXPECT_EQ(edit.top, item.top);
    EXPECT_EQ(edit.right, item.right / 5 * 2);
    EXPECT_EQ(edit.bottom, item.bottom);
    m_host.PressCancel();
}

TEST_F(ProcMonAdd, WhatIsTypedStandsWhereTheItemsNameWill)
{
    OpenAndType("");
    RECT item{};
    support::SendWithin(Page().Control(IDC_PROCMON_LIST), LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&item));
    RECT edit{};
    GetClientRect(InPlaceEdit(), &edit);
    RECT text{};
    support::SendWithin(InPlaceEdit(), EM_GETRECT, 0, reinterpret_cast<LPARAM>(&text));
    EXPECT_EQ(edit.bottom, item.bottom - item.top);
    EXPECT_EQ(text.left, 1);
    EXPECT_EQ(text.top, 0);
    m_host.PressCancel();
}

// --- every way to end it

TEST_F(ProcMonAdd, EnterAddsTheTrimmedNameInSmallLetters)
{
    OpenAndType(typedName);
    PressAdd();
    ExpectAdded();
    EXPECT_EQ(m_host.Thread().Focus(), Page().Control(IDC_PROCMON_LIST));
    m_host.PressCancel();
}

TEST_F(ProcMonAdd, TheFirstAttemptToLeaveAfterEnterIsAbsorbed)
{
    OpenAndType(typedName);
    PressAdd();
    m_host.Sheet().Click(IDOK);
    EXPECT_FALSE(m_host.HasEnded());
    m_host.PressOk();
    ExpectStored("\x80myapp.exe\0"s);
}

TEST_F(ProcMonAdd, TheEnterKeyAddsTheNameOnly)
{
    OpenAndType(typedName);
    Press(VK_RETURN);
    EXPECT_FALSE(m_host.HasEnded());
    ExpectAdded();
    m_host.PressOk();
    ExpectStored("\x80myapp.exe\0"s);
}

TEST_F(ProcMonAdd, TheEscapeKeyClosesTheSheetAndSavesNothing)
{
    OpenAndType(typedName);
    Press(VK_ESCAPE);
    m_host.WaitForEnd();
    support::ExpectAbsent(m_machine.hostParameters, "ProcMon");
}

TEST_F(ProcMonAdd, TheCrossSavesNothing)
{
    OpenAndType(typedName);
    m_host.Close();
    support::ExpectAbsent(m_machine.hostParameters, "ProcMon");
}

TEST_F(ProcMonAdd, ClickingOkAddsTheNameAndSaves)
{
    OpenAndType(typedName);
    m_host.PressOk();
    ExpectStored("\x80myapp.exe\0"s);
}

TEST_F(ProcMonAdd, AClickIntoTheListAddsTheName)
{
    OpenAndType(typedName);
    const HWND list = Page().Control(IDC_PROCMON_LIST);
    const LPARAM place = MAKELPARAM(5, 80);
    PostMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, place);
    PostMessageA(list, WM_LBUTTONUP, 0, place);
    m_host.Thread().Settle();
    EXPECT_EQ(Items(), (Rows{"myapp.exe\tNone", "running.exe\tNone"}));
    EXPECT_EQ(Page().Text(IDC_PROCMON_ADD), "&Add");
    m_host.PressOk();
    ExpectStored("\x80myapp.exe\0"s);
}

TEST_F(ProcMonAdd, SwitchingToAnotherProgramAddsTheName)
{
    OpenAndType(typedName);
    ExpectSwitchingAwayAddsTheName();
}

TEST_F(ProcMonAdd, SwitchingProgramsFromEnterAddsTheName)
{
    OpenAndType(typedName);
    Page().Focus(IDC_PROCMON_ADD);
    ExpectSwitchingAwayAddsTheName();
}

TEST_F(ProcMonAdd, SwitchingThePageAddsTheNameAndStays)
{
    OpenAndType(typedName);
    EXPECT_FALSE(m_host.TurnTo("Storage"));
    ExpectAdded();
    EXPECT_TRUE(m_host.TurnTo("Storage"));
    m_host.PressOk();
    ExpectStored("\x80myapp.exe\0"s);
}

TEST_F(ProcMonAdd, F1AddsTheNameAndShowsNoHelp)
{
    support::HelpRecorder help(m_host.Module());
    OpenAndType(typedName);
    Press(VK_F1);
    EXPECT_TRUE(help.Requests().empty());
    ExpectAdded();
    Press(VK_F1);
    EXPECT_EQ(help.Requests().size(), 1U);
    m_host.PressCancel();
}

TEST_F(ProcMonAdd, FocusOnEnterWaitsForThePress)
{
    OpenAndType(typedName);
    Page().Focus(IDC_PROCMON_ADD);
    EXPECT_EQ(Page().Text(IDC_PROCMON_ADD), "&Enter");
    EXPECT_NE(InPlaceEdit(), nullptr);
    Press(VK_SPACE);
    ExpectAdded();
    m_host.PressCancel();
}

TEST_F(ProcMonAdd, LeavingTheEnterButtonUnpressedAddsTheName)
{
    OpenAndType(typedName);
    Page().Focus(IDC_PROCMON_ADD);
    Page().Focus(IDC_PROCMON_LIST);
    ExpectAdded();
    m_host.PressOk();
    ExpectStored("\x80myapp.exe\0"s);
}

// --- what is added

TEST_F(ProcMonAdd, NothingTypedLeavesNoItem)
{
    OpenAndType("   ");
    PressAdd();
    EXPECT_EQ(Items(), Rows{"running.exe\tNone"});
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), 0);
    m_host.PressCancel();
}

TEST_F(ProcMonAdd, ANameThatIsListedBecomesTheCurrentOne)
{
    m_tasks.names = {"a", "b"};
    Open();
    Add("B");
    EXPECT_EQ(Items(), (Rows{"a\tNone", "b\tNone"}));
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), 1);
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_DELETE));
    m_host.PressCancel();
}

TEST_F(ProcMonAdd, AddingTwiceListsBothNames)
{
    Open();
    Add("beta");
    Add("alpha");
    EXPECT_EQ(Items(), (Rows{"alpha\tNone", "beta\tNone"}));
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), 0);
    m_host.PressOk();
    ExpectStored("\x80"s
                 "alpha\0\x80"s
                 "beta\0"s);
}

TEST_F(ProcMonAdd, AddingTheSameNameTwiceListsItOnce)
{
    Open();
    Add("beta");
    Add("Beta");
    EXPECT_EQ(Items(), Rows{"beta\tNone"});
    m_host.PressCancel();
}

TEST_F(ProcMonAdd, TheNewNamesOptionCanBeChanged)
{
    Open();
    Add("beta");
    Page().Click(IDC_PROCMON_START_STOP);
    m_host.PressOk();
    ExpectStored("\x83"s
                 "beta\0"s);
}

TEST_F(ProcMonAdd, ANameOf260CharactersIsStoredWhole)
{
    const std::string longName(260, 'n');
    Open();
    Add(longName);
    m_host.PressOk();
    ExpectStored("\x80" + longName + '\0');
}

TEST_F(ProcMonAdd, ANameEndsAtATab)
{
    Open();
    PressAdd();
    support::SendWithin(InPlaceEdit(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>("a\tb"));
    PressAdd();
    EXPECT_EQ(Items(), Rows{"a\tb\tNone"});
    m_host.Sheet().Click(IDOK);
    m_host.PressOk();
    ExpectStored("\x80"s
                 "a\0"s);
}

// A list box's search for an empty text finds nothing.
TEST_F(ProcMonAdd, AStoredItemWithoutANameStaysApart)
{
    Store("\x83\0\x01"s
          "a\0"s);
    Open();
    PressAdd();
    EXPECT_EQ(Items(), (Rows{"\tNone", "\tStart & Stop", "a\tStart"}));
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), 0);
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_DELETE));
    Type("b");
    PressAdd();
    EXPECT_EQ(Items(), (Rows{"\tStart & Stop", "a\tStart", "b\tNone"}));
    m_host.Sheet().Click(IDOK);
    m_host.PressOk();
    ExpectStored("\x01"s
                 "a\0\x80"s
                 "b\0"s);
}

TEST_F(ProcMonAdd, WorksInAListThatWasEmptied)
{
    Store("\x81"s
          "a\0"s);
    Open();
    Page().Click(IDC_PROCMON_DELETE);
    Page().Click(IDC_PROCMON_DELETE);
    PressAdd();
    EXPECT_EQ(Items(), Rows{"\tNone"});
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_DELETE));
    Type("b");
    PressAdd();
    EXPECT_EQ(Items(), Rows{"b\tNone"});
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), 0);
    EXPECT_TRUE(Page().IsEnabled(IDC_PROCMON_DELETE));
    EXPECT_EQ(CheckedOption(), "None");
    m_host.PressCancel();
}

TEST_F(ProcMonAdd, NothingTypedInAnEmptyListLeavesItEmpty)
{
    Open();
    PressAdd();
    PressAdd();
    EXPECT_EQ(Items(), Rows());
    EXPECT_TRUE(Page().IsEnabled(IDC_PROCMON_DELETE));
    EXPECT_EQ(CheckedOption(), "");
    m_host.PressCancel();
}

TEST_F(ProcMonAdd, CancelForgetsWhatWasAdded)
{
    Open();
    Add("beta");
    m_host.PressCancel();
    support::ExpectAbsent(m_machine.hostParameters, "ProcMon");
}

} // namespace
