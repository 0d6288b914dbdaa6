// The sheet from the keyboard: pages, buttons, and help on each page.
#include "applet/AppletTest.h"
#include "machine/BoardScript.h"
#include "resources/resource.h"

#include <commctrl.h>

namespace {

using support::ExpectDword;

// All pages: a domain controller with a board.
class SheetKeys : public AppletTest
{
  protected:
    SheetKeys()
    {
        m_machine.productOptions.SetString("ProductType", "Lanmannt");
        m_host.Open();
    }

    // The tabs that a key shows one after the other, from the one in front until that is there again.
    [[nodiscard]] std::vector<std::string> Turned(std::initializer_list<BYTE> held, WORD key) const
    {
        std::vector<std::string> shown = {m_host.ActiveTab()};
        for (std::size_t press = 0; press < m_host.Tabs().size(); ++press) {
            m_host.PressKeyWith(held, key);
            shown.push_back(m_host.ActiveTab());
        }
        return shown;
    }

    support::HelpRecorder m_help{m_host.Module()};
    support::LibraryScript m_libraries{m_host.Module()};
    support::BoardScript m_board{m_libraries};
};

using Tabs = std::vector<std::string>;

const Tabs tabsAndBack = {"Services",        "SNMP Settings", "Storage", "Desktop Mgmt",
                          "Process Monitor", "Remote Lumora", "Services"};

TEST_F(SheetKeys, CtrlTabAndCtrlPageDownTurnForward)
{
    EXPECT_EQ(Turned({VK_CONTROL}, VK_TAB), tabsAndBack);
    EXPECT_EQ(Turned({VK_CONTROL}, VK_NEXT), tabsAndBack);
    m_host.PressCancel();
}

TEST_F(SheetKeys, CtrlShiftTabAndCtrlPageUpTurnBack)
{
    const Tabs backwards(tabsAndBack.rbegin(), tabsAndBack.rend());
    EXPECT_EQ(Turned({VK_CONTROL, VK_SHIFT}, VK_TAB), backwards);
    EXPECT_EQ(Turned({VK_CONTROL}, VK_PRIOR), backwards);
    m_host.PressCancel();
}

TEST_F(SheetKeys, ArrowKeysOnTheTabsTurnThePages)
{
    ASSERT_TRUE(TabTo(FindWindowExA(m_host.Sheet().Window(), nullptr, WC_TABCONTROLA, nullptr)));
    m_host.PressKey(VK_RIGHT);
    EXPECT_EQ(m_host.ActiveTab(), "SNMP Settings");
    m_host.PressCancel();
}

TEST_F(SheetKeys, EnterIsOk)
{
    m_host.Page("Storage").Check(IDC_STORAGE_FIBRE_TAPE);
    m_host.PressKey(VK_RETURN);
    m_host.WaitForEnd();
    ExpectDword(m_machine.fibreAgent, "DisableFlags", 1);
}

TEST_F(SheetKeys, EscIsCancel)
{
    m_host.Page("Storage").Check(IDC_STORAGE_FIBRE_TAPE);
    m_host.PressKey(VK_ESCAPE);
    m_host.WaitForEnd();
    ExpectDword(m_machine.fibreAgent, "DisableFlags", 0);
}

TEST_F(SheetKeys, TabReachesTheButtonsAfterThePage)
{
    const support::DialogDriver sheet = m_host.Sheet();
    ASSERT_TRUE(TabTo(sheet.Control(IDOK)));
    m_host.PressKey(VK_TAB);
    EXPECT_EQ(m_host.Thread().Focus(), sheet.Control(IDCANCEL));
    m_host.PressKey(VK_TAB);
    EXPECT_EQ(m_host.Thread().Focus(), sheet.Control(IDHELP));
    m_host.PressCancel();
}

TEST_F(SheetKeys, TheSpaceBarPressesHelp)
{
    ASSERT_TRUE(TabTo(m_host.Sheet().Control(IDHELP)));
    m_host.PressKey(VK_SPACE);
    ASSERT_EQ(m_help.Requests().size(), 1U);
    EXPECT_EQ(m_help.Requests()[0].topic, "html\\vtnm7ktv.htm");
    m_host.PressCancel();
}

TEST_F(SheetKeys, F1ShowsEachPagesTopic)
{
    Tabs topics;
    for (const std::string& tab : m_host.Tabs()) {
        m_host.Page(tab);
        m_help.Clear();
        m_host.PressKey(VK_F1);
        for (const support::HelpRequest& request : m_help.Requests())
            topics.push_back(tab + ": " + request.topic);
    }
    EXPECT_EQ(topics, (Tabs{"Services: html\\vtnm7ktv.htm", "SNMP Settings: html\\vtnm7usw.htm",
                            "Storage: html\\vtnm7wh1.htm", "Desktop Mgmt: html\\vtnm2zvy.htm",
                            "Process Monitor: html\\vtnm5po2.htm", "Remote Lumora: html\\vtnm6cmd.htm"}));
    m_host.PressCancel();
}

} // namespace
