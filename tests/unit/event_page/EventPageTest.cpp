// The Event Log page on a window of the test: dynamic creation, enable rules, adding and removing.
#include "EventPageTest.h"

#include "support/HelpRecorder.h"

#include <htmlhelp.h>

namespace {

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

TEST_F(EventPageLoad, ShowsTheStoredAccountAndComputers)
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

TEST_F(EventPageSave, WritesEveryPartThatChangedInAnyOrder)
{
    const auto changeList = [this] {
        SetText(IDC_EVENT_NEW_NAME, "BETA");
        Click(IDC_EVENT_ADD);
    };
    const auto changeAccount = [this] {
        SetText(IDC_EVENT_PASSWORD, "other secret");
        SetText(IDC_EVENT_USER, "other");
        SetText(IDC_EVENT_PASSWORD, "new"); // a second change must not count as none
    };
    for (const bool isListFirst : {true, false}) {
        Store({"ALPHA"}, "events", "secret");
        Open();
        if (isListFirst)
            changeList();
        changeAccount();
        if (!isListFirst)
            changeList();
        Save();
        support::ExpectMultiString(m_parameters, "Destination", {"ALPHA", "BETA"});
        support::ExpectString(m_parameters, "DestinationUsername", "other");
        support::ExpectBinary(m_parameters, "DestinationPassword", ScramblePassword("new"));
    }
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
