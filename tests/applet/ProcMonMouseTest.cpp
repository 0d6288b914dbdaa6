// The mouse on the Process Monitor page while a name is being typed.
#include "applet/ProcMonPageTest.h"

#include <commctrl.h>

namespace {

using namespace std::string_literals;

constexpr LPARAM inside = MAKELPARAM(5, 5);

class ProcMonMouse : public ProcMonPageTest
{
  protected:
    // The page with three processes, and a name typed into the in-place edit over a fourth line, the first.
    void OpenAndType(const std::string& name)
    {
        m_tasks.names = {"a.exe", "n.exe", "z.exe"};
        Open();
        PressAdd();
        Type(name);
    }

    void DoubleClickAdd() const
    {
        const HWND button = Page().Control(IDC_PROCMON_ADD);
        ClickAt(button, inside);
        ClickAt(button, inside, WM_LBUTTONDBLCLK);
    }

    // Text of the selected line.
    [[nodiscard]] std::string Selected() const
    {
        const int row = Page().Selection(IDC_PROCMON_LIST);
        return row < 0 ? "none" : Items().at(static_cast<std::size_t>(row));
    }

    void ExpectTypingEnded(support::Location where = support::Location::current())
    {
        support::ExpectEqual("&Add"s, Page().Text(IDC_PROCMON_ADD), "Add button", where);
        support::ExpectEqual(true, InPlaceEdit() == nullptr, "edit is closed", where);
    }

    const Rows listed = {"a.exe\tNone", "n.exe\tNone", "z.exe\tNone"};
    const Rows withMyApp = {"a.exe\tNone", "myapp\tNone", "n.exe\tNone", "z.exe\tNone"};
};

// --- both clicks of a double-click

TEST_F(ProcMonMouse, ADoubleClickOnAddIsAddAndEnter)
{
    m_tasks.names = {"a.exe"};
    Open();
    DoubleClickAdd();
    ExpectTypingEnded();
    EXPECT_EQ(Items(), Rows{"a.exe\tNone"});
    m_host.PressCancel();
}

TEST_F(ProcMonMouse, ADoubleClickOnEnterIsEnterAndAdd)
{
    OpenAndType("MyApp");
    DoubleClickAdd();
    EXPECT_EQ(Page().Text(IDC_PROCMON_ADD), "&Enter");
    EXPECT_EQ(Items().size(), withMyApp.size() + 1);
    EXPECT_EQ(m_host.Thread().Focus(), InPlaceEdit());
    m_host.PressCancel();
}

TEST_F(ProcMonMouse, AClickOnEnterAddsTheNameOnce)
{
    OpenAndType("MyApp");
    ClickAt(Page().Control(IDC_PROCMON_ADD), inside);
    ExpectTypingEnded();
    EXPECT_EQ(Items(), withMyApp);
    EXPECT_EQ(Selected(), "myapp\tNone");
    m_host.PressCancel();
}

// --- the list

class ProcMonMouseRow : public ProcMonMouse, public testing::WithParamInterface<int>
{
};

TEST_P(ProcMonMouseRow, IsSelectedWhenItIsClickedWithNothingTyped)
{
    OpenAndType("");
    const std::string clicked = Items().at(static_cast<std::size_t>(GetParam()));
    ClickRow(GetParam());
    ExpectTypingEnded();
    EXPECT_EQ(Items(), listed);
    EXPECT_EQ(Selected(), clicked);
    m_host.PressCancel();
}

TEST_P(ProcMonMouseRow, IsSelectedByAClickDuringTyping)
{
    OpenAndType("MyApp");
    const std::string clicked = Items().at(static_cast<std::size_t>(GetParam()));
    ClickRow(GetParam());
    ExpectTypingEnded();
    EXPECT_EQ(Items(), withMyApp);
    EXPECT_EQ(Selected(), clicked);
    EXPECT_EQ(CheckedOption(), "None");
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_DELETE));
    m_host.PressOk();
    ExpectStored("\x80myapp\0"s);
}

INSTANTIATE_TEST_SUITE_P(Rows, ProcMonMouseRow, testing::Values(1, 2, 3));

TEST_F(ProcMonMouse, AClickFromTheEnterButtonSelectsALine)
{
    OpenAndType("MyApp");
    Page().Focus(IDC_PROCMON_ADD);
    ClickRow(1);
    ExpectTypingEnded();
    EXPECT_EQ(Items(), withMyApp);
    EXPECT_EQ(Selected(), "a.exe\tNone");
    m_host.PressCancel();
}

TEST_F(ProcMonMouse, AClickBesideTheEditAddsTheName)
{
    OpenAndType("MyApp");
    ClickRow(0);
    ExpectTypingEnded();
    EXPECT_EQ(Items(), withMyApp);
    EXPECT_EQ(Selected(), "myapp\tNone");
    m_host.PressCancel();
}

TEST_F(ProcMonMouse, AClickBelowTheLinesAddsTheName)
{
    OpenAndType("MyApp");
    const HWND list = Page().Control(IDC_PROCMON_LIST);
    RECT client{};
    GetClientRect(list, &client);
    ClickAt(list, MAKELPARAM(5, client.bottom - 2));
    ExpectTypingEnded();
    EXPECT_EQ(Items(), withMyApp);
    EXPECT_EQ(Selected(), "myapp\tNone");
    m_host.PressCancel();
}

TEST_F(ProcMonMouse, AClickAfterTheTypingSelectsTheLine)
{
    OpenAndType("MyApp");
    ClickRow(1);
    ClickRow(3);
    EXPECT_EQ(Selected(), "z.exe\tNone");
    EXPECT_EQ(m_host.Thread().Focus(), Page().Control(IDC_PROCMON_LIST));
    m_host.PressCancel();
}

TEST_F(ProcMonMouse, TheEditScrollsWithItsLine)
{
    for (char name = 'a'; name <= 'z'; ++name)
        m_tasks.names.emplace_back(1, name);
    Open();
    PressAdd();
    const HWND list = Page().Control(IDC_PROCMON_LIST);
    PostMessageA(list, WM_VSCROLL, SB_LINEDOWN, 0);
    m_host.Thread().Settle();
    RECT line{};
    support::SendWithin(list, LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&line));
    RECT edit{};
    GetWindowRect(InPlaceEdit(), &edit);
    MapWindowPoints(HWND_DESKTOP, list, reinterpret_cast<LPPOINT>(&edit), 2);
    EXPECT_LT(line.top, 0);
    EXPECT_EQ(edit.top, line.top);
    m_host.PressCancel();
}

// Two equal lines: the first one that begins with the name is another's.
TEST_F(ProcMonMouse, AClickSelectsTheSecondOfTwoEqualLines)
{
    m_tasks.names = {"foo bar"};
    Open();
    Add("foo");
    Add("foo");
    const Rows lines = {"foo bar\tNone", "foo\tNone", "foo\tNone"};
    ASSERT_EQ(Items(), lines);
    for (const int row : {2, 1, 2}) {
        ClickRow(row);
        EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), row);
    }
    m_host.PressCancel();
}

TEST_F(ProcMonMouse, AClickWhileTypingSelectsALineThatAnotherOneBeginsWith)
{
    m_tasks.names = {"foo bar"};
    Open();
    Add("foo");
    Add("foo");
    ClickRow(1);
    Page().Click(IDC_PROCMON_START_STOP);
    ClickRow(2);
    Page().Click(IDC_PROCMON_START);
    const Rows lines = {"foo bar\tNone", "foo\tStart & Stop", "foo\tStart"};
    ASSERT_EQ(Items(), lines);
    PressAdd();
    ClickRow(3);
    EXPECT_EQ(Selected(), "foo\tStart");
    m_host.PressCancel();
}

// --- everything else that can be clicked

TEST_F(ProcMonMouse, DeleteIsNotForTheNewLine)
{
    OpenAndType("MyApp");
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_DELETE));
    // Windows gives a click on a disabled control to the dialog.
    RECT place{};
    GetWindowRect(Page().Control(IDC_PROCMON_DELETE), &place);
    MapWindowPoints(HWND_DESKTOP, Page().Window(), reinterpret_cast<LPPOINT>(&place), 2);
    ClickAt(Page().Window(), MAKELPARAM(place.left + 5, place.top + 5));
    EXPECT_EQ(Page().Text(IDC_PROCMON_ADD), "&Enter");
    EXPECT_EQ(m_host.Thread().Focus(), InPlaceEdit());
    m_host.PressCancel();
}

TEST_F(ProcMonMouse, DeleteAfterTheTypingTakesTheNameOutAgain)
{
    OpenAndType("MyApp");
    ClickAt(Page().Control(IDC_PROCMON_ADD), inside);
    ClickAt(Page().Control(IDC_PROCMON_DELETE), inside);
    EXPECT_EQ(Items(), listed);
    EXPECT_EQ(Selected(), "a.exe\tNone");
    m_host.PressCancel();
}

// The click takes the focus from the edit before it asks the page to let go.
TEST_F(ProcMonMouse, ATabAddsTheNameAndTurns)
{
    OpenAndType("MyApp");
    const HWND tabs = FindWindowExA(m_host.Sheet().Window(), nullptr, WC_TABCONTROLA, nullptr);
    RECT first{};
    support::SendWithin(tabs, TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
    ClickAt(tabs, MAKELPARAM(first.left + 5, first.top + 5));
    EXPECT_EQ(m_host.ActiveTab(), "Services");
    m_host.Page(tab);
    ExpectTypingEnded();
    EXPECT_EQ(Items(), withMyApp);
    m_host.PressOk();
    ExpectStored("\x80myapp\0"s);
}

TEST_F(ProcMonMouse, OkAddsTheNameAndSaves)
{
    OpenAndType("MyApp");
    ClickAt(m_host.Sheet().Control(IDOK), inside);
    m_host.WaitForEnd();
    ExpectStored("\x80myapp\0"s);
}

TEST_F(ProcMonMouse, CancelSavesNothing)
{
    OpenAndType("MyApp");
    ClickAt(m_host.Sheet().Control(IDCANCEL), inside);
    m_host.WaitForEnd();
    support::ExpectAbsent(m_machine.hostParameters, "ProcMon");
}

} // namespace
