// The Event Log page on a window of the test: dynamic creation, enable rules, adding and removing.
#include "pages/EventPage.h"

#include "resources/resource.h"
#include "support/HelpRecorder.h"
#include "support/TestRegistry.h"

#include <gtest/gtest.h>
#include <htmlhelp.h>
#include <memory>

namespace {

using Names = std::vector<std::string>;

// The page stands on a plain window instead of a sheet; its messages are sent to it directly.
class EventPage : public testing::Test
{
  protected:
    EventPage()
    {
        m_parameters.Clear();
        m_frame.CreateEx(0, "STATIC", "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 500, 300), nullptr, 0);
    }

    ~EventPage() override
    {
        m_page.reset();
        m_frame.DestroyWindow();
    }

    // A machine with an account and these destinations.
    void Store(const Names& computers, const std::string& user = "events",
               const std::string& password = "secret")
    {
        m_parameters.SetMultiString("Destination", computers);
        m_parameters.SetString("DestinationUsername", user);
        m_parameters.SetBinary("DestinationPassword", ScramblePassword(password));
    }

    void Open()
    {
        m_page.reset(dynamic_cast<CVtnEventPropPage*>(RUNTIME_CLASS(CVtnEventPropPage)->CreateObject()));
        ASSERT_TRUE(m_page->Create(IDD_EVENT, &m_frame));
        m_page->ShowWindow(SW_SHOW);
    }

    [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(m_page->m_hWnd, id); }
    [[nodiscard]] bool IsEnabled(int id) const { return ::IsWindowEnabled(Control(id)) != FALSE; }
    [[nodiscard]] std::string Text(int id) const
    {
        CString text;
        m_page->GetDlgItemText(id, text);
        return static_cast<LPCSTR>(text);
    }
    // Replaces the field's text, of which its page is told.
    void SetText(int id, const char* text) { m_page->SetDlgItemText(id, text); }
    void Type(int id, const std::string& text) const
    {
        for (const char character : text)
            ::SendMessageA(Control(id), WM_CHAR, static_cast<BYTE>(character), 1);
    }
    void Click(int id) const { ::SendMessageA(Control(id), BM_CLICK, 0, 0); }
    void Select(int row) const
    {
        ::SendMessageA(Control(IDC_EVENT_LIST), LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    }
    [[nodiscard]] int Selection() const
    {
        return static_cast<int>(::SendMessageA(Control(IDC_EVENT_LIST), LB_GETCURSEL, 0, 0));
    }

    [[nodiscard]] Names Computers() const
    {
        const HWND list = Control(IDC_EVENT_LIST);
        Names names(static_cast<std::size_t>(::SendMessageA(list, LB_GETCOUNT, 0, 0)));
        for (std::size_t i = 0; i < names.size(); ++i) {
            char text[256] = "";
            ::SendMessageA(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(&text[0]));
            names[i] = &text[0];
        }
        return names;
    }

    // Saves as a sheet does: after the page has let go.
    void Save()
    {
        EXPECT_TRUE(m_page->OnKillActive());
        m_page->Save();
    }

    support::SavedKey m_parameters{"SYSTEM\\CurrentControlSet\\Services\\VtMgHOST\\Parameters"};
    CWnd m_frame;
    std::unique_ptr<CVtnEventPropPage> m_page;
};

using EventPageLoad = EventPage;
using EventPageEnable = EventPage;
using EventPageEdit = EventPage;
using EventPageSave = EventPage;

constexpr int destinationControls[] = {IDC_EVENT_NEW_NAME_LABEL, IDC_EVENT_NEW_NAME, IDC_EVENT_LIST_LABEL,
                                       IDC_EVENT_LIST};

// --- creation and loading

TEST_F(EventPageLoad, IsMadeThroughItsRunTimeClass)
{
    const std::unique_ptr<CObject> object(RUNTIME_CLASS(CVtnEventPropPage)->CreateObject());
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CPropertyPage)));
    EXPECT_STREQ(object->GetRuntimeClass()->m_lpszClassName, "CVtnEventPropPage");
    EXPECT_FALSE((std::is_default_constructible_v<CVtnEventPropPage>));
}

TEST_F(EventPageLoad, ARefusalReachesWhoeverCreatesThePage)
{
    m_parameters.Delete();
    EXPECT_THROW((void)RUNTIME_CLASS(CVtnEventPropPage)->CreateObject(), int);
}

TEST_F(EventPageLoad, ShowsTheAccountAndTheComputersAsTheyAreStored)
{
    Store({"beta", "ALPHA", "beta"});
    Open();
    EXPECT_EQ(Text(IDC_EVENT_USER), "events");
    EXPECT_EQ(Text(IDC_EVENT_PASSWORD), "secret");
    EXPECT_EQ(Computers(), (Names{"beta", "ALPHA", "beta"}));
    EXPECT_EQ(Text(IDC_EVENT_NEW_NAME), "");
    EXPECT_FALSE(m_page->IsChanged());
}

TEST_F(EventPageLoad, WithoutValuesEverythingIsEmpty)
{
    Open();
    EXPECT_EQ(Text(IDC_EVENT_USER), "");
    EXPECT_EQ(Text(IDC_EVENT_PASSWORD), "");
    EXPECT_EQ(Computers(), Names());
}

TEST_F(EventPageLoad, AUserNameOfAnotherTypeIsEmpty)
{
    m_parameters.SetExpandString("DestinationUsername", "events");
    Open();
    EXPECT_EQ(Text(IDC_EVENT_USER), "");
}

TEST_F(EventPageLoad, APasswordEndsWhereItDescramblesToAZero)
{
    m_parameters.SetBinary("DestinationPassword", {'a' ^ 32, 33, 'c' ^ 34, 0});
    Open();
    EXPECT_EQ(Text(IDC_EVENT_PASSWORD), "a");
}

TEST_F(EventPageLoad, ShowsItsHelpTopic)
{
    support::HelpRecorder help(GetModuleHandleA(nullptr));
    Open();
    m_page->ShowHelp();
    ASSERT_EQ(help.Requests().size(), 1U);
    EXPECT_EQ(help.Requests()[0].topic, "html\\vtnm641c.htm");
    EXPECT_EQ(help.Requests()[0].command, UINT{HH_DISPLAY_TOPIC});
    EXPECT_EQ(help.Requests()[0].owner, nullptr);
}

// --- what is enabled

TEST_F(EventPageEnable, WithAnAccountTheDestinationsAre)
{
    Store({"ALPHA"});
    Open();
    for (const int id : destinationControls)
        EXPECT_TRUE(IsEnabled(id)) << id;
    EXPECT_FALSE(IsEnabled(IDC_EVENT_ADD));
    EXPECT_TRUE(IsEnabled(IDC_EVENT_REMOVE));
}

TEST_F(EventPageEnable, WithoutAUserNameOrPasswordNoDestinationIs)
{
    Store({"ALPHA"});
    Open();
    for (const int field : {IDC_EVENT_USER, IDC_EVENT_PASSWORD}) {
        SetText(field, "");
        for (const int id : destinationControls)
            EXPECT_FALSE(IsEnabled(id)) << id;
        EXPECT_FALSE(IsEnabled(IDC_EVENT_ADD));
        EXPECT_FALSE(IsEnabled(IDC_EVENT_REMOVE));
        SetText(field, "x");
        EXPECT_TRUE(IsEnabled(IDC_EVENT_REMOVE));
    }
}

TEST_F(EventPageEnable, RemoveNeedsAnEntry)
{
    Store({});
    Open();
    EXPECT_FALSE(IsEnabled(IDC_EVENT_REMOVE));
}

TEST_F(EventPageEnable, AddNeedsANewName)
{
    Store({});
    Open();
    SetText(IDC_EVENT_NEW_NAME, "X");
    EXPECT_TRUE(IsEnabled(IDC_EVENT_ADD));
    SetText(IDC_EVENT_NEW_NAME, "");
    EXPECT_FALSE(IsEnabled(IDC_EVENT_ADD));
}

TEST_F(EventPageEnable, ANewNameAloneDecidesAboutAdd)
{
    Open();
    SetText(IDC_EVENT_NEW_NAME, "X");
    EXPECT_TRUE(IsEnabled(IDC_EVENT_ADD));
}

// --- editing

TEST_F(EventPageEdit, TypedComputerNamesAreInCapitals)
{
    Store({});
    Open();
    Type(IDC_EVENT_NEW_NAME, "srv-1");
    Click(IDC_EVENT_ADD);
    EXPECT_EQ(Computers(), Names{"SRV-1"});
}

TEST_F(EventPageEdit, EachFieldRefusesWhatDoesNotBelongIntoIt)
{
    Store({});
    Open();
    SetText(IDC_EVENT_USER, "");
    Type(IDC_EVENT_USER, "a b\\_1");
    EXPECT_EQ(Text(IDC_EVENT_USER), "ab_1");
    SetText(IDC_EVENT_PASSWORD, "");
    Type(IDC_EVENT_PASSWORD, "a b\\:1");
    EXPECT_EQ(Text(IDC_EVENT_PASSWORD), "a b\\:1");
    Type(IDC_EVENT_NEW_NAME, "\\\\a b:");
    EXPECT_EQ(Text(IDC_EVENT_NEW_NAME), "\\\\AB");
}

TEST_F(EventPageEdit, TheFieldsTakeSoManyCharacters)
{
    Store({});
    Open();
    EXPECT_EQ(::SendMessageA(Control(IDC_EVENT_USER), EM_GETLIMITTEXT, 0, 0), 40);
    EXPECT_EQ(::SendMessageA(Control(IDC_EVENT_PASSWORD), EM_GETLIMITTEXT, 0, 0), 40);
    EXPECT_EQ(::SendMessageA(Control(IDC_EVENT_NEW_NAME), EM_GETLIMITTEXT, 0, 0), 20);
}

TEST_F(EventPageEdit, AddAppendsAndSelectsOnlyTheFirstEntry)
{
    Store({});
    Open();
    SetText(IDC_EVENT_NEW_NAME, "BETA");
    Click(IDC_EVENT_ADD);
    EXPECT_EQ(Selection(), 0);
    EXPECT_EQ(Text(IDC_EVENT_NEW_NAME), "");
    EXPECT_FALSE(IsEnabled(IDC_EVENT_ADD));
    EXPECT_TRUE(IsEnabled(IDC_EVENT_REMOVE));
    EXPECT_EQ(::GetFocus(), Control(IDC_EVENT_LIST));
    Select(-1);
    SetText(IDC_EVENT_NEW_NAME, "ALPHA");
    Click(IDC_EVENT_ADD);
    EXPECT_EQ(Selection(), -1);
    EXPECT_EQ(Computers(), (Names{"BETA", "ALPHA"}));
}

TEST_F(EventPageEdit, TheSameNameTwiceIsListedTwice)
{
    Store({"ALPHA"});
    Open();
    SetText(IDC_EVENT_NEW_NAME, "ALPHA");
    Click(IDC_EVENT_ADD);
    EXPECT_EQ(Computers(), (Names{"ALPHA", "ALPHA"}));
}

TEST_F(EventPageEdit, RemovePutsTheNameBackForEditing)
{
    Store({"ALPHA", "BETA"});
    Open();
    Select(1);
    Click(IDC_EVENT_REMOVE);
    EXPECT_EQ(Computers(), Names{"ALPHA"});
    EXPECT_EQ(Text(IDC_EVENT_NEW_NAME), "BETA");
    EXPECT_EQ(::SendMessageA(Control(IDC_EVENT_NEW_NAME), EM_GETSEL, 0, 0), MAKELONG(0, 4));
    EXPECT_EQ(Selection(), 0);
    EXPECT_TRUE(IsEnabled(IDC_EVENT_ADD));
    EXPECT_EQ(::GetFocus(), Control(IDC_EVENT_NEW_NAME));
}

TEST_F(EventPageEdit, ADoubleClickRemoves)
{
    Store({"ALPHA"});
    Open();
    const HWND list = Control(IDC_EVENT_LIST);
    for (const int message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
        ::SendMessageA(list, static_cast<UINT>(message), MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(Computers(), Names());
    EXPECT_EQ(Text(IDC_EVENT_NEW_NAME), "ALPHA");
    EXPECT_FALSE(IsEnabled(IDC_EVENT_REMOVE));
}

TEST_F(EventPageEdit, RemoveWithoutASelectionDoesNothing)
{
    Store({"ALPHA"});
    Open();
    Click(IDC_EVENT_REMOVE);
    EXPECT_EQ(Computers(), Names{"ALPHA"});
    EXPECT_FALSE(m_page->IsChanged());
}

// --- what changed, and saving it

TEST_F(EventPageSave, WritesOnlyTheChangedPart)
{
    Store({"ALPHA"}, "events", "secret");
    Open();
    SetText(IDC_EVENT_USER, "other");
    EXPECT_TRUE(m_page->IsChanged());
    m_parameters.DeleteValue("Destination");
    m_parameters.DeleteValue("DestinationPassword");
    Save();
    support::ExpectString(m_parameters, "DestinationUsername", "other");
    support::ExpectAbsent(m_parameters, "Destination");
    support::ExpectAbsent(m_parameters, "DestinationPassword");
}

TEST_F(EventPageSave, WritesAChangedPasswordScrambled)
{
    Store({});
    Open();
    SetText(IDC_EVENT_PASSWORD, "new");
    Save();
    support::ExpectBinary(m_parameters, "DestinationPassword", ScramblePassword("new"));
}

TEST_F(EventPageSave, WritesAChangedListInItsOrder)
{
    Store({"beta"});
    Open();
    SetText(IDC_EVENT_NEW_NAME, "ALPHA");
    Click(IDC_EVENT_ADD);
    Save();
    support::ExpectMultiString(m_parameters, "Destination", {"beta", "ALPHA"});
}

TEST_F(EventPageSave, AListThatWasEmptiedIsWrittenEmpty)
{
    Store({"beta"});
    Open();
    Select(0);
    Click(IDC_EVENT_REMOVE);
    Save();
    EXPECT_EQ(m_parameters.Value("Destination"), (support::StoredValue{REG_MULTI_SZ, {}}));
}

} // namespace
