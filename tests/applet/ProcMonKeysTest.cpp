// The Process Monitor page by the keyboard alone.
#include "applet/ProcMonPageTest.h"

namespace {

using namespace std::string_literals;

class ProcMonKeys : public ProcMonPageTest
{
  protected:
    // The page with two configured processes, the first of which was added by hand, and the focus in the
    // list.
    void OpenList()
    {
        Store("\x81"s
              "a\0\x02"s
              "b\0"s);
        Open();
        Page().Focus(IDC_PROCMON_LIST);
    }

    [[nodiscard]] int Focused() const { return GetDlgCtrlID(m_host.Thread().Focus()); }
    [[nodiscard]] int Row() const { return Page().Selection(IDC_PROCMON_LIST); }

    // The first key selects the line that has the focus already, whichever key it is.
    void SelectLast() const
    {
        Press(VK_HOME);
        Press(VK_END);
    }

    // The controls that Tab comes to, from the focused one until it is back there.
    [[nodiscard]] std::vector<int> TabStops() const
    {
        std::vector<int> stops;
        const int first = Focused();
        do {
            stops.push_back(Focused());
            Press(VK_TAB);
        } while (Focused() != first && stops.size() < 20);
        return stops;
    }
};

constexpr int tabControl = 0x3020;

TEST_F(ProcMonKeys, TabSkipsTheOptionsUntilAnItemIsSelected)
{
    OpenList();
    EXPECT_EQ(TabStops(), (std::vector{IDC_PROCMON_LIST, IDC_PROCMON_ADD, IDC_PROCMON_DELETE, IDOK, IDCANCEL,
                                       IDHELP, tabControl}));
    m_host.PressCancel();
}

TEST_F(ProcMonKeys, TabComesToTheCheckedOptionOfTheItem)
{
    OpenList();
    Select(1);
    EXPECT_EQ(TabStops(), (std::vector{IDC_PROCMON_LIST, IDC_PROCMON_STOP, IDC_PROCMON_ADD, IDOK, IDCANCEL,
                                       IDHELP, tabControl}));
    m_host.PressCancel();
}

TEST_F(ProcMonKeys, ArrowsInTheListShowEachItemsOption)
{
    OpenList();
    Press(VK_DOWN);
    Press(VK_DOWN);
    EXPECT_EQ(Row(), 1);
    EXPECT_EQ(CheckedOption(), "Stop");
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_DELETE));
    Press(VK_UP);
    EXPECT_EQ(Row(), 0);
    EXPECT_EQ(CheckedOption(), "Start");
    EXPECT_TRUE(Page().IsEnabled(IDC_PROCMON_DELETE));
    m_host.PressCancel();
}

TEST_F(ProcMonKeys, ArrowsGoThroughTheOptionsAndEnterSaves)
{
    OpenList();
    SelectLast();
    Press(VK_TAB);
    Press(VK_DOWN);
    EXPECT_EQ(Items(), (Rows{"a\tStart", "b\tStart & Stop"}));
    Press(VK_UP);
    Press(VK_UP);
    EXPECT_EQ(CheckedOption(), "Start");
    EXPECT_EQ(Focused(), IDC_PROCMON_START);
    Press(VK_RETURN);
    m_host.WaitForEnd();
    ExpectStored("\x81"s
                 "a\0\x01"s
                 "b\0"s);
}

TEST_F(ProcMonKeys, AltAAddsANameAndEnterSaves)
{
    OpenList();
    m_host.PressKeyWithAlt('A');
    EXPECT_EQ(m_host.Thread().Focus(), InPlaceEdit());
    Type("C.exe");
    Press(VK_RETURN);
    EXPECT_FALSE(m_host.HasEnded());
    EXPECT_EQ(Items(), (Rows{"a\tStart", "b\tStop", "c.exe\tNone"}));
    EXPECT_EQ(Row(), 2);
    EXPECT_EQ(Focused(), IDC_PROCMON_LIST);
    Press(VK_RETURN);
    m_host.WaitForEnd();
    ExpectStored("\x81"s
                 "a\0\x02"s
                 "b\0\x80"s
                 "c.exe\0"s);
}

TEST_F(ProcMonKeys, AltEEntersTheName)
{
    OpenList();
    m_host.PressKeyWithAlt('A');
    Type("c");
    m_host.PressKeyWithAlt('E');
    EXPECT_EQ(Items(), (Rows{"a\tStart", "b\tStop", "c\tNone"}));
    EXPECT_EQ(Page().Text(IDC_PROCMON_ADD), "&Add");
    EXPECT_EQ(Focused(), IDC_PROCMON_LIST);
    m_host.PressCancel();
}

TEST_F(ProcMonKeys, TabAndSpaceEnterTheName)
{
    OpenList();
    m_host.PressKeyWithAlt('A');
    Type("c");
    Press(VK_TAB);
    EXPECT_EQ(Focused(), IDC_PROCMON_ADD);
    EXPECT_EQ(Page().Text(IDC_PROCMON_ADD), "&Enter");
    Press(VK_SPACE);
    EXPECT_EQ(Items(), (Rows{"a\tStart", "b\tStop", "c\tNone"}));
    EXPECT_EQ(Page().Text(IDC_PROCMON_ADD), "&Add");
    m_host.PressCancel();
}

TEST_F(ProcMonKeys, AltDTakesOutAnAddedName)
{
    OpenList();
    Press(VK_HOME);
    m_host.PressKeyWithAlt('D');
    EXPECT_EQ(Items(), Rows{"b\tStop"});
    EXPECT_EQ(Focused(), IDC_PROCMON_LIST);
    Press(VK_RETURN);
    m_host.WaitForEnd();
    ExpectStored("\x02"s
                 "b\0"s);
}

TEST_F(ProcMonKeys, AltDLeavesOtherNamesAlone)
{
    OpenList();
    SelectLast();
    m_host.PressKeyWithAlt('D');
    EXPECT_EQ(Items(), (Rows{"a\tStart", "b\tStop"}));
    m_host.PressCancel();
}

TEST_F(ProcMonKeys, EscapeSavesNothing)
{
    OpenList();
    Press(VK_HOME);
    m_host.PressKeyWithAlt('D');
    Press(VK_ESCAPE);
    m_host.WaitForEnd();
    ExpectStored("\x81"s
                 "a\0\x02"s
                 "b\0"s);
}

} // namespace
