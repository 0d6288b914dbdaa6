// Options, deleting and saving on the Process Monitor page.
#include "applet/ProcMonPageTest.h"

namespace {

using namespace std::string_literals;

using ProcMonOption = ProcMonPageTest;
using ProcMonDelete = ProcMonPageTest;
using ProcMonSave = ProcMonPageTest;

// --- options

TEST_F(ProcMonOption, AnItemShowsItsOptionWhenItIsSelected)
{
    Store("\x83"s
          "a\0\x01"s
          "b\0"s);
    m_tasks.names = {"c"};
    Open();
    Select(0);
    EXPECT_EQ(CheckedOption(), "Start && Stop");
    EXPECT_TRUE(Page().IsEnabled(IDC_PROCMON_DELETE));
    EXPECT_TRUE(Page().IsEnabled(IDC_PROCMON_STOP));
    EXPECT_TRUE(Page().IsEnabled(IDC_PROCMON_OPTION_GROUP));
    Select(1);
    EXPECT_EQ(CheckedOption(), "Start");
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_DELETE));
    Select(2);
    EXPECT_EQ(CheckedOption(), "None");
    m_host.PressCancel();
}

TEST_F(ProcMonOption, OneAboveThreeChecksNoneAndCanBeReplaced)
{
    Store("\x8F"s
          "a\0"s);
    Open();
    Select(0);
    EXPECT_EQ(CheckedOption(), "");
    EXPECT_TRUE(Page().IsEnabled(IDC_PROCMON_DELETE));
    Page().Click(IDC_PROCMON_STOP);
    EXPECT_EQ(Items(), Rows{"a\tStop"});
    m_host.PressOk();
    ExpectStored("\x82"s
                 "a\0"s);
}

TEST_F(ProcMonOption, ChangingItKeepsTheItemsPlaceAndSelection)
{
    m_tasks.names = {"a", "b", "c"};
    Open();
    Select(1);
    Page().Click(IDC_PROCMON_STOP);
    EXPECT_EQ(Items(), (Rows{"a\tNone", "b\tStop", "c\tNone"}));
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), 1);
    m_host.PressOk();
    ExpectStored("\x02"s
                 "b\0"s);
}

TEST_F(ProcMonOption, ChangingItKeepsTheMarkOfAnAddedName)
{
    Store("\x80"s
          "a\0"s);
    Open();
    Select(0);
    Page().Click(IDC_PROCMON_START);
    EXPECT_TRUE(Page().IsEnabled(IDC_PROCMON_DELETE));
    m_host.PressOk();
    ExpectStored("\x81"s
                 "a\0"s);
}

TEST_F(ProcMonOption, BackAtNoneARunningProcessIsNotStored)
{
    Store("\x01"s
          "a\0"s);
    Open();
    Select(0);
    Page().Click(IDC_PROCMON_NONE);
    m_host.PressOk();
    ExpectStored("");
}

TEST_F(ProcMonOption, TheArrowKeysGoThroughTheOptions)
{
    m_tasks.names = {"a"};
    Open();
    Select(0);
    Page().Focus(IDC_PROCMON_NONE);
    Press(VK_DOWN);
    EXPECT_EQ(Items(), Rows{"a\tStart"});
    m_host.PressCancel();
}

// --- deleting

TEST_F(ProcMonDelete, MakesTheItemBeforeTheCurrentOne)
{
    Store("\x81"s
          "a\0\x82"s
          "b\0\x83"s
          "c\0"s);
    Open();
    Select(1);
    Page().Click(IDC_PROCMON_DELETE);
    EXPECT_EQ(Items(), (Rows{"a\tStart", "c\tStart & Stop"}));
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), 0);
    EXPECT_EQ(CheckedOption(), "Start");
    EXPECT_EQ(m_host.Thread().Focus(), Page().Control(IDC_PROCMON_LIST));
    m_host.PressOk();
    ExpectStored("\x81"s
                 "a\0\x83"s
                 "c\0"s);
}

TEST_F(ProcMonDelete, OfTheFirstItemGoesOnToTheNext)
{
    Store("\x81"s
          "a\0\x02"s
          "b\0"s);
    Open();
    Select(0);
    Page().Click(IDC_PROCMON_DELETE);
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), 0);
    EXPECT_EQ(CheckedOption(), "Stop");
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_DELETE));
    m_host.PressCancel();
}

TEST_F(ProcMonDelete, UntilTheListIsEmptyLeavesTheButtonEnabled)
{
    Store("\x81"s
          "a\0\x82"s
          "b\0"s);
    Open();
    Select(1);
    for (int round = 0; round < 3; ++round)
        Page().Click(IDC_PROCMON_DELETE);
    EXPECT_EQ(Items(), Rows());
    EXPECT_TRUE(Page().IsEnabled(IDC_PROCMON_DELETE));
    EXPECT_EQ(CheckedOption(), "");
    m_host.PressOk();
    ExpectStored("");
}

TEST_F(ProcMonDelete, OfNothingCountsAsAChange)
{
    Store("\0"s);
    Open();
    Page().Click(IDC_PROCMON_DELETE);
    m_host.PressOk();
    ExpectStored("");
}

TEST_F(ProcMonDelete, OptionsOfAnEmptyListListNothing)
{
    Store("\x81"s
          "a\0"s);
    Open();
    Page().Click(IDC_PROCMON_DELETE);
    Page().Click(IDC_PROCMON_STOP);
    EXPECT_EQ(Items(), Rows());
    m_host.PressCancel();
}

TEST_F(ProcMonDelete, OptionsOfAnEmptyListCountAsAChange)
{
    Open();
    SendMessageA(Page().Window(), WM_COMMAND, MAKEWPARAM(IDC_PROCMON_STOP, BN_CLICKED),
                 reinterpret_cast<LPARAM>(Page().Control(IDC_PROCMON_STOP)));
    m_host.PressOk();
    ExpectStored("");
}

// --- saving

TEST_F(ProcMonSave, AnUntouchedPageIsNotSaved)
{
    const std::string oddities = "\x01"s
                                 "B\0\0a\0\x03"s;
    Store(oddities);
    Open();
    m_host.PressOk();
    ExpectStored(oddities);
}

TEST_F(ProcMonSave, SavesAnOrderedListByteForByte)
{
    const std::string stored = "\x01"s
                               "a.exe\0\x83"s
                               "b.exe\0\x80"s
                               "c\xE4.exe\0\x0F"s
                               "d\0"s;
    Store(stored);
    m_tasks.names = {"running.exe"};
    Open();
    Add("");
    m_host.PressOk();
    ExpectStored(stored);
}

TEST_F(ProcMonSave, LeavesOutItemsWithoutANameOrAnOption)
{
    Store("\x01"s
          "a\0\0b\0\x03"s);
    Open();
    Add("");
    m_host.PressOk();
    ExpectStored("\x01"s
                 "a\0"s);
}

TEST_F(ProcMonSave, AStoredNameEndsAtATab)
{
    Store("\x01"s
          "a\tb\0\x82"s
          "c\0"s);
    Open();
    EXPECT_EQ(Items(), (Rows{"a\tb\tStart", "c\tStop"}));
    Add("");
    m_host.PressOk();
    ExpectStored("\x01"s
                 "a\0\x82"s
                 "c\0"s);
}

TEST_F(ProcMonSave, ANameOf260CharactersComesBackWhole)
{
    const std::string stored = "\x03" + std::string(260, 'n') + '\0';
    Store(stored);
    Open();
    Add("");
    m_host.PressOk();
    ExpectStored(stored);
}

TEST_F(ProcMonSave, TakesSixtyFourKilobytes)
{
    std::string stored;
    for (int number = 10000; stored.size() < 65536; ++number)
        stored += "\x81n" + std::to_string(number) + '\0';
    Store(stored);
    Open();
    Add("");
    m_host.PressOk();
    ExpectStored(stored);
}

TEST_F(ProcMonSave, AValueOfAnotherTypeIsReplaced)
{
    m_machine.hostParameters.SetString("ProcMon", "\x01text");
    m_tasks.names = {"a"};
    Open();
    EXPECT_EQ(Items(), Rows{"a\tNone"});
    Select(0);
    Page().Click(IDC_PROCMON_START);
    m_host.PressOk();
    ExpectStored("\x01"s
                 "a\0"s);
}

TEST_F(ProcMonSave, ReportsARefusal)
{
    Open();
    Page().Click(IDC_PROCMON_DELETE);
    m_machine.hostParameters.Delete();
    m_boxes.Answer(IDOK);
    m_host.PressOk();
    ASSERT_EQ(m_boxes.Shown().size(), 1U);
    EXPECT_EQ(m_boxes.Shown()[0].caption, "Management Agents Error");
}

} // namespace
