// The Remote Lumora page by the keyboard alone.
#include "applet/BoardPageTest.h"

namespace {

class BoardPageKeys : public BoardPageTest
{
  protected:
    void OpenAtTheBattery()
    {
        Open();
        Page().Focus(IDC_BOARD_BATTERY);
    }

    [[nodiscard]] int Focused() const { return GetDlgCtrlID(m_host.Thread().Focus()); }
    void Press(WORD key) const { m_host.PressKey(key); }
};

TEST_F(BoardPageKeys, TabGoesThroughTheBoxesAndTheButton)
{
    OpenAtTheBattery();
    for (const int next :
         {IDC_BOARD_REMOTE_ALERTING, IDC_BOARD_SERVER_RESET, IDC_BOARD_RESET, IDOK, IDCANCEL, IDHELP})
    {
        Press(VK_TAB);
        EXPECT_EQ(Focused(), next);
    }
    m_host.PressCancel();
}

TEST_F(BoardPageKeys, TabSkipsABatteryThatTheBoardLacks)
{
    m_board.record = {2, 0, 0, 0};
    Open();
    Page().Focus(IDC_BOARD_REMOTE_ALERTING);
    constexpr int stopsOfTheSheetAndThePage = 7;
    for (int stop = 0; stop < stopsOfTheSheetAndThePage; ++stop) {
        Press(VK_TAB);
        EXPECT_NE(Focused(), IDC_BOARD_BATTERY);
    }
    EXPECT_EQ(Focused(), IDC_BOARD_REMOTE_ALERTING);
    m_host.PressKeyWithAlt('B');
    m_host.PressOk();
    EXPECT_TRUE(m_board.written.empty());
}

TEST_F(BoardPageKeys, SpaceChecksABoxAndEnterSaves)
{
    OpenAtTheBattery();
    Press(VK_SPACE);
    Press(VK_RETURN);
    m_host.WaitForEnd();
    ExpectWritten({1, 0, 0, 0});
}

TEST_F(BoardPageKeys, EachBoxHasItsAccessKey)
{
    OpenAtTheBattery();
    m_host.PressKeyWithAlt('B');
    EXPECT_EQ(Checked(), (std::array{true, false, false}));
    m_host.PressKeyWithAlt('A');
    EXPECT_EQ(Checked(), (std::array{true, true, false}));
    m_host.PressKeyWithAlt('S');
    EXPECT_EQ(Checked(), (std::array{true, true, true}));
    m_host.PressKeyWithAlt('B');
    Press(VK_RETURN);
    m_host.WaitForEnd();
    ExpectWritten({0, 1, 1, 0});
}

TEST_F(BoardPageKeys, AltRAsksBeforeItResetsTheBoard)
{
    OpenAtTheBattery();
    m_boxes.Answer(IDNO);
    m_host.PressKeyWithAlt('R');
    EXPECT_EQ(m_boxes.Shown().size(), 1U);
    EXPECT_TRUE(m_board.written.empty());
    m_boxes.Answer(IDYES);
    m_host.PressKeyWithAlt('R');
    ExpectWritten({0, 0, 0, 1});
    m_host.PressCancel();
}

TEST_F(BoardPageKeys, EscapeSavesNothing)
{
    OpenAtTheBattery();
    Press(VK_SPACE);
    Press(VK_ESCAPE);
    m_host.WaitForEnd();
    EXPECT_TRUE(m_board.written.empty());
}

} // namespace
