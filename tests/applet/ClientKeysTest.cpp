// The Desktop Mgmt page by keys alone.
#include "applet/ClientPageTest.h"

namespace {

using support::DialogDriver;
using support::ExpectString;
using support::FileExists;

class ClientKeys : public ClientPage
{
  protected:
    // The page, with the focus where the Tab key finds it first.
    DialogDriver OpenByKeys()
    {
        const DialogDriver page = Open();
        page.Focus(IDC_DESKTOP_ENABLE);
        return page;
    }

    void ExpectFocus(const DialogDriver& dialog, int id,
                     support::Location where = support::Location::current())
    {
        support::ExpectEqual(dialog.Control(id), m_host.Thread().Focus(), "focus", where);
    }
};

TEST_F(ClientKeys, SwitchOnNameTheScriptAndSave)
{
    const std::string path = m_scripts.File("my start.bat");
    const DialogDriver page = OpenByKeys();
    m_boxes.Answer(IDOK);
    m_host.PressKeyWithAlt('E');
    EXPECT_TRUE(page.IsChecked(IDC_DESKTOP_ENABLE));
    m_host.PressKeyWithAlt('L');
    ExpectFocus(page, IDC_DESKTOP_SCRIPT);
    page.Type(IDC_DESKTOP_SCRIPT, path + "*?\""); // in place of what is there; no path has the last three
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), path);
    m_host.PressKey(VK_RETURN);
    EXPECT_EQ(m_host.WaitForEnd(), 0);
    ExpectString(m_machine.hostAgent, "ClientIni", path);
    EXPECT_TRUE(FileExists(path));
    EXPECT_TRUE(m_shares.Find("VTNDATA"));
}

TEST_F(ClientKeys, SpaceSwitchesOffAndOnAgain)
{
    const DialogDriver page = OpenByKeys();
    m_boxes.Answer(IDOK).Answer(IDOK);
    m_host.PressKey(VK_SPACE);
    EXPECT_TRUE(page.IsChecked(IDC_DESKTOP_ENABLE));
    m_host.PressKey(VK_SPACE);
    EXPECT_FALSE(page.IsChecked(IDC_DESKTOP_ENABLE));
    m_host.PressKey(VK_SPACE);
    support::ExpectBoxes(m_boxes, {enabledNote, enabledNote});
    m_host.PressCancel();
}

TEST_F(ClientKeys, TabGoesFromTheSwitchToThePathAndItsButton)
{
    const DialogDriver page = OpenSwitchedOn();
    page.Focus(IDC_DESKTOP_ENABLE);
    m_host.PressKey(VK_TAB);
    ExpectFocus(page, IDC_DESKTOP_SCRIPT);
    ExpectWholePathSelected(page);
    m_host.PressKey(VK_TAB);
    ExpectFocus(page, IDC_DESKTOP_BROWSE);
    m_host.PressKey(VK_TAB);
    ExpectFocus(m_host.Sheet(), IDOK);
    m_host.PressCancel();
}

TEST_F(ClientKeys, TabPassesThePathByWhileItIsOff)
{
    OpenByKeys();
    m_host.PressKey(VK_TAB);
    ExpectFocus(m_host.Sheet(), IDOK);
    m_host.PressCancel();
}

TEST_F(ClientKeys, EscapeSavesNothing)
{
    OpenByKeys();
    m_boxes.Answer(IDOK);
    m_host.PressKey(VK_SPACE);
    m_host.PressKey(VK_ESCAPE);
    EXPECT_EQ(m_host.WaitForEnd(), 0);
    ExpectSwitchedOff();
}

} // namespace
