// The applet driver, on the sample applet.
#include "support/AppletHost.h"
#include "support/MessageBoxScript.h"
#include "support/ProgramPath.h"
#include "support/sample/resource.h"
#include "support/TestRegistry.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace {

using support::AppletHost;
using support::DialogDriver;
using support::MessageBoxScript;
using support::ScratchKey;

class AppletHostTest : public testing::Test
{
  protected:
    ScratchKey m_settings{"SOFTWARE\\vtnmgmt-sample"};
    AppletHost m_host{support::BesideThisProgram("sample.cpl")};
};

TEST(AppletHost, SaysWhichLibraryItCannotLoad)
{
    EXPECT_THROW(AppletHost("no such.cpl"), std::runtime_error);
}

TEST(AppletHost, UnloadsTheLibraryAtTheEnd)
{
    {
        const AppletHost host(support::BesideThisProgram("sample.cpl"));
        EXPECT_EQ(GetModuleHandleA("sample.cpl"), host.Module());
    }
    EXPECT_EQ(GetModuleHandleA("sample.cpl"), nullptr);
}

TEST_F(AppletHostTest, AsksForTheAppletAndPassesItsDataOn)
{
    EXPECT_EQ(m_host.Info().idName, IDS_SAMPLE_NAME);
    m_host.Open();
    EXPECT_EQ(m_host.PressCancel(), 7);
}

TEST_F(AppletHostTest, ShowsTheSheetWithItsTabs)
{
    m_host.Open();
    EXPECT_EQ(m_host.Sheet().Title(), "Sample sheet");
    EXPECT_EQ(m_host.Tabs(), (std::vector<std::string>{"First", "Second"}));
    EXPECT_EQ(m_host.ActiveTab(), "First");
    m_host.PressCancel();
    EXPECT_THROW(static_cast<void>(m_host.Sheet()), std::runtime_error);
}

TEST_F(AppletHostTest, ChecksBoxesOnPagesAndPressesOk)
{
    m_host.Open();
    m_host.Page("Second").Check(IDC_SECOND_CHECK);
    const DialogDriver first = m_host.Page("First");
    first.Check(IDC_FIRST_CHECK);
    EXPECT_TRUE(first.IsChecked(IDC_FIRST_CHECK));
    first.Uncheck(IDC_FIRST_CHECK);
    m_host.PressOk();
    ExpectDword(m_settings, "First", 0);
    ExpectDword(m_settings, "Second", 1);
}

TEST_F(AppletHostTest, CancelAndTheCrossSaveNothing)
{
    m_host.Open();
    m_host.ActivePage().Check(IDC_FIRST_CHECK);
    m_host.PressCancel();
    m_host.Open();
    m_host.ActivePage().Check(IDC_FIRST_CHECK);
    m_host.Close();
    ExpectAbsent(m_settings, "First");
}

TEST_F(AppletHostTest, StaysOnAPageThatDoesNotLetGo)
{
    m_host.Open();
    m_host.ActivePage().SetText(IDC_FIRST_EDIT, "stay");
    EXPECT_FALSE(m_host.TurnTo("Second"));
    EXPECT_THROW(m_host.Page("Second"), std::runtime_error);
    m_host.Sheet().Click(IDOK);
    EXPECT_FALSE(m_host.HasEnded());
    m_host.PressCancel();
}

TEST_F(AppletHostTest, TypesIntoAnEditControl)
{
    m_host.Open();
    const DialogDriver page = m_host.ActivePage();
    page.SetText(IDC_FIRST_EDIT, "");
    page.Type(IDC_FIRST_EDIT, "a1b");
    EXPECT_EQ(page.Text(IDC_FIRST_EDIT), "a1b");
    EXPECT_EQ(m_host.Thread().Focus(), page.Control(IDC_FIRST_EDIT));
    m_host.PressCancel();
}

TEST_F(AppletHostTest, ChoosesRowsAsAUserDoes)
{
    m_host.Open();
    const DialogDriver page = m_host.Page("Second");
    EXPECT_EQ(page.Items(IDC_SECOND_LIST), (std::vector<std::string>{"one", "two", "three"}));
    EXPECT_EQ(page.Items(IDC_SECOND_COMBO), page.Items(IDC_SECOND_LIST));
    EXPECT_EQ(page.Selection(IDC_SECOND_LIST), -1);
    page.Select(IDC_SECOND_LIST, 2);
    EXPECT_EQ(page.Selection(IDC_SECOND_COMBO), 2);
    page.Select(IDC_SECOND_COMBO, 1);
    EXPECT_EQ(page.Selection(IDC_SECOND_LIST), 1);
    EXPECT_THROW(page.Select(IDC_SECOND_LIST, 3), std::runtime_error);
    m_host.PressCancel();
}

TEST_F(AppletHostTest, DoesNotPressWhatAUserCouldNot)
{
    m_host.Open();
    const DialogDriver first = m_host.ActivePage();
    EXPECT_FALSE(first.IsEnabled(IDC_FIRST_DISABLED));
    EXPECT_FALSE(first.Has(IDC_SECOND_CHECK));
    EXPECT_THROW(first.Click(IDC_FIRST_DISABLED), std::runtime_error);
    EXPECT_THROW(first.Click(IDC_SECOND_CHECK), std::runtime_error);
    m_host.Page("Second");
    EXPECT_FALSE(first.IsVisible(IDC_FIRST_CHECK));
    EXPECT_THROW(first.Check(IDC_FIRST_CHECK), std::runtime_error);
    m_host.PressCancel();
}

TEST_F(AppletHostTest, LetsAScriptAnswerThePagesBoxes)
{
    MessageBoxScript boxes(m_host.Module());
    m_host.Open();
    boxes.Answer(IDYES);
    m_host.ActivePage().Click(IDC_FIRST_ASK);
    EXPECT_EQ(m_host.ActivePage().Text(IDC_FIRST_EDIT), "yes");
    EXPECT_EQ(boxes.Shown().at(0).owner, m_host.ActivePage().Window());
    m_host.PressCancel();
}

TEST_F(AppletHostTest, DrivesADialogAboveTheSheet)
{
    m_host.Open();
    const DialogDriver page = m_host.ActivePage();
    page.Click(IDC_FIRST_MORE);
    const DialogDriver more = m_host.WaitForDialog("More");
    EXPECT_THROW(page.Click(IDC_FIRST_ASK), std::runtime_error);
    more.Click(IDOK);
    EXPECT_FALSE(IsWindow(more.Window()));
    m_host.PressCancel();
}

TEST_F(AppletHostTest, PressesHelpAndF1ButNotWithShift)
{
    MessageBoxScript boxes(m_host.Module());
    m_host.Open();
    boxes.Answer(IDOK).Answer(IDOK);
    m_host.Sheet().Click(IDHELP);
    m_host.ActivePage().Focus(IDC_FIRST_CHECK);
    m_host.PressKey(VK_F1);
    EXPECT_EQ(boxes.Shown().size(), 2U);
    m_host.HoldKeys({VK_SHIFT});
    m_host.PressKey(VK_F1);
    EXPECT_EQ(boxes.Shown().size(), 2U);
    m_host.PressCancel();
}

TEST_F(AppletHostTest, PressesKeysAsSystemDialogsKnowThem)
{
    MessageBoxScript boxes(m_host.Module());
    m_host.Open();
    const DialogDriver page = m_host.ActivePage();
    page.Focus(IDC_FIRST_CHECK);
    m_host.PressKey(VK_SPACE);
    EXPECT_TRUE(page.IsChecked(IDC_FIRST_CHECK));
    m_host.PressKey(VK_TAB);
    EXPECT_EQ(m_host.Thread().Focus(), page.Control(IDC_FIRST_EDIT));
    boxes.Answer(IDYES);
    m_host.PressKeyWithAlt('A');
    EXPECT_EQ(page.Text(IDC_FIRST_EDIT), "yes");
    m_host.PressKeyWithAlt('K');
    m_host.PressKey(VK_RETURN);
    EXPECT_EQ(m_host.WaitForEnd(), 7);
    ExpectDword(m_settings, "First", 0);
}

TEST_F(AppletHostTest, PressesKeysWhileOthersAreDownAndReleasesThose)
{
    m_host.Open();
    const DialogDriver page = m_host.ActivePage();
    page.Focus(IDC_FIRST_EDIT);
    m_host.PressKeyWith({VK_SHIFT}, VK_TAB);
    EXPECT_EQ(m_host.Thread().Focus(), page.Control(IDC_FIRST_CHECK));
    m_host.PressKey(VK_TAB);
    EXPECT_EQ(m_host.Thread().Focus(), page.Control(IDC_FIRST_EDIT));
    m_host.PressCancel();
}

TEST_F(AppletHostTest, ShowsTheLibraryAnotherCommandLine)
{
    m_host.SetCommandLine("control.exe sample.cpl /single");
    m_host.Open();
    EXPECT_EQ(m_host.Tabs(), std::vector<std::string>{"First"});
    m_host.PressCancel();
    m_host.SetCommandLine("control.exe sample.cpl");
    m_host.Open();
    EXPECT_EQ(m_host.Tabs().size(), 2U);
    m_host.PressCancel();
}

TEST_F(AppletHostTest, ReportsAnAppletThatShowsNoSheet)
{
    m_host.SetCommandLine("control.exe sample.cpl /none");
    EXPECT_THROW(m_host.Open(), std::runtime_error);
    m_host.DoubleClick();
    EXPECT_EQ(m_host.WaitForEnd(), 7);
}

TEST_F(AppletHostTest, PassesOnWhatTheAppletThrows)
{
    m_host.SetCommandLine("control.exe sample.cpl /throw");
    m_host.DoubleClick();
    EXPECT_THROW(m_host.WaitForEnd(), std::runtime_error);
    m_host.SetCommandLine("control.exe sample.cpl");
    m_host.Open();
    m_host.PressCancel();
}

TEST(AppletHost, ClosesWhatAFailedTestLeftOpen)
{
    const auto leaveOpen = [] {
        AppletHost host(support::BesideThisProgram("sample.cpl"));
        host.Open();
        host.ActivePage().Click(IDC_FIRST_ASK);
    };
    EXPECT_NONFATAL_FAILURE(leaveOpen(), "\"Sample sheet\"");
    EXPECT_EQ(GetModuleHandleA("sample.cpl"), nullptr);
}

} // namespace
