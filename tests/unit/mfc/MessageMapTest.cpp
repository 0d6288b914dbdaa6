// Message maps: what an entry accepts, and which one is found.
#include "TestDialogs.h"

#include <gtest/gtest.h>

namespace {

class CHandlers : public CWnd
{
  public:
    void Plain() {}
    void WithId(UINT) {}
    LRESULT Message(WPARAM, LPARAM) { return 0; }
    void Mouse(UINT, CPoint) {}
    int WithArgument(int) { return 0; }
};

template <auto Handler>
concept HandlesCommands = requires
{
    &AfxHandler<Handler>::Plain;
};
template <auto Handler>
concept HandlesMessages = requires
{
    &AfxHandler<Handler>::Message;
};
template <auto Handler>
concept HandlesRanges = requires
{
    &AfxHandler<Handler>::WithId;
};
template <auto Handler>
concept HandlesCreation = requires
{
    &AfxHandler<Handler>::Create;
};

template <auto Handler>
concept HandlesMouse = requires
{
    &AfxHandler<Handler>::Mouse;
};

// An entry with a handler of the wrong type does not compile.
static_assert(HandlesCommands<&CHandlers::Plain>);
static_assert(!HandlesCommands<&CHandlers::WithId>);
static_assert(!HandlesCommands<&CHandlers::Message>);
static_assert(!HandlesCommands<&CHandlers::WithArgument>);
static_assert(HandlesMessages<&CHandlers::Message>);
static_assert(!HandlesMessages<&CHandlers::Plain>);
static_assert(HandlesRanges<&CHandlers::WithId>);
static_assert(!HandlesRanges<&CHandlers::Plain>);
static_assert(HandlesMouse<&CHandlers::Mouse>);
static_assert(!HandlesMouse<&CHandlers::WithId>);
static_assert(!HandlesCreation<&CHandlers::WithArgument>);

// Notes which handler ran.
class CBase : public CWnd
{
  public:
    void OnShared() { m_ran = "base"; }
    void OnBase() { m_ran = "only base"; }

    std::string m_ran;

    DECLARE_MESSAGE_MAP()
};

class CDerived : public CBase
{
  public:
    void OnShared() { m_ran = "derived"; }
    void OnChange() { m_ran = "change"; }
    void OnUpdate() { m_ran = "update"; }
    void OnOption(UINT id) { m_ran = "option " + std::to_string(id); }
    void OnPressed() { m_ran = "button"; }
    LRESULT OnQuestion(WPARAM wParam, LPARAM lParam) { return static_cast<LRESULT>(wParam) + lParam; }

    DECLARE_MESSAGE_MAP()
};

constexpr UINT WM_QUESTION = WM_APP + 7;

BEGIN_MESSAGE_MAP(CBase, CWnd)
    ON_COMMAND(1, &CBase::OnShared)
    ON_COMMAND(2, &CBase::OnBase)
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CDerived, CBase)
    ON_COMMAND(1, &CDerived::OnShared)
    ON_EN_CHANGE(3, &CDerived::OnChange)
    ON_EN_UPDATE(3, &CDerived::OnUpdate)
    ON_CONTROL_RANGE(BN_CLICKED, 10, 13, &CDerived::OnOption)
    ON_BN_CLICKED(20, &CDerived::OnPressed)
    ON_BN_DOUBLECLICKED(21, &CDerived::OnPressed)
    ON_EN_SETFOCUS(22, &CDerived::OnPressed)
    ON_EN_KILLFOCUS(22, &CDerived::OnPressed)
    ON_LBN_SELCHANGE(23, &CDerived::OnPressed)
    ON_LBN_DBLCLK(23, &CDerived::OnPressed)
    ON_CBN_SELCHANGE(24, &CDerived::OnPressed)
    ON_MESSAGE(WM_QUESTION, &CDerived::OnQuestion)
END_MESSAGE_MAP()

struct MessageMap : testing::Test
{
    // What a command or notification runs; "none" when OnCmdMsg says that nothing handled it.
    std::string Run(UINT id, int code)
    {
        target.m_ran = "";
        return target.OnCmdMsg(id, code, nullptr, nullptr) ? target.m_ran : "none";
    }

    CDerived target;
};

TEST_F(MessageMap, PrefersTheDerivedClass)
{
    EXPECT_EQ(Run(1, CN_COMMAND), "derived");
}

TEST_F(MessageMap, FallsBackToTheBaseClass)
{
    EXPECT_EQ(Run(2, CN_COMMAND), "only base");
}

TEST_F(MessageMap, DistinguishesNotifications)
{
    EXPECT_EQ(Run(3, EN_CHANGE), "change");
    EXPECT_EQ(Run(3, EN_UPDATE), "update");
    EXPECT_EQ(Run(3, EN_SETFOCUS), "none");
    EXPECT_EQ(Run(4, EN_CHANGE), "none");
}

TEST_F(MessageMap, HandsARangesHandlerTheId)
{
    EXPECT_EQ(Run(10, BN_CLICKED), "option 10");
    EXPECT_EQ(Run(13, BN_CLICKED), "option 13");
    EXPECT_EQ(Run(9, BN_CLICKED), "none");
    EXPECT_EQ(Run(14, BN_CLICKED), "none");
}

TEST_F(MessageMap, KnowsTheNotificationOfEachMacro)
{
    EXPECT_EQ(Run(20, BN_CLICKED), "button");
    EXPECT_EQ(Run(21, BN_DOUBLECLICKED), "button");
    EXPECT_EQ(Run(22, EN_SETFOCUS), "button");
    EXPECT_EQ(Run(22, EN_KILLFOCUS), "button");
    EXPECT_EQ(Run(23, LBN_SELCHANGE), "button");
    EXPECT_EQ(Run(23, LBN_DBLCLK), "button");
    EXPECT_EQ(Run(24, CBN_SELCHANGE), "button");
}

TEST_F(MessageMap, AnswersMessagesWithTheHandlersResult)
{
    target.CreateEx(0, "STATIC", "", WS_OVERLAPPEDWINDOW, CRect(0, 0, 10, 10), nullptr, 0);

    EXPECT_EQ(target.SendMessage(WM_QUESTION, 40, 2), 42);
}

TEST_F(MessageMap, SaysWhoWouldHandleACommandWithoutRunningIt)
{
    AFX_CMDHANDLERINFO info = {};

    EXPECT_TRUE(target.OnCmdMsg(1, CN_COMMAND, nullptr, &info));
    EXPECT_EQ(info.pTarget, &target);
    EXPECT_EQ(target.m_ran, "");
}

// A list box that handles its own selection.
class CReflecting : public CListBox
{
  public:
    void OnSelChange() { ++m_changes; }

    int m_changes = 0;

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CReflecting, CListBox)
    ON_CONTROL_REFLECT(LBN_SELCHANGE, &CReflecting::OnSelChange)
END_MESSAGE_MAP()

// Counts the notifications of its list box.
class CListParent : public CTestDialog
{
  public:
    void OnSelChange() { ++m_changes; }
    void OnDblClk() { ++m_doubleClicks; }

    int m_changes = 0;
    int m_doubleClicks = 0;

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CListParent, CTestDialog)
    ON_LBN_SELCHANGE(IDC_LIST, &CListParent::OnSelChange)
    ON_LBN_DBLCLK(IDC_LIST, &CListParent::OnDblClk)
END_MESSAGE_MAP()

struct Reflection : testing::Test
{
    void SetUp() override { ASSERT_TRUE(parent.Create(IDD_CONTROLS)); }
    void Notify(WORD code)
    {
        const auto box = reinterpret_cast<LPARAM>(parent.GetDlgItem(IDC_LIST)->m_hWnd);
        parent.SendMessage(WM_COMMAND, MAKEWPARAM(IDC_LIST, code), box);
    }

    CListParent parent;
    CReflecting list;
};

TEST_F(Reflection, GivesTheControlItsOwnNotificationFirst)
{
    list.SubclassDlgItem(IDC_LIST, &parent);
    Notify(LBN_SELCHANGE);

    EXPECT_EQ(list.m_changes, 1);
    EXPECT_EQ(parent.m_changes, 0);
}

TEST_F(Reflection, LeavesTheParentWhatTheControlDoesNotHandle)
{
    list.SubclassDlgItem(IDC_LIST, &parent);
    Notify(LBN_DBLCLK);

    EXPECT_EQ(parent.m_doubleClicks, 1);
}

TEST_F(Reflection, NeedsAnObjectForTheControl)
{
    Notify(LBN_SELCHANGE);

    EXPECT_EQ(parent.m_changes, 1);
}

TEST_F(Reflection, HappensOnARealClick)
{
    list.SubclassDlgItem(IDC_LIST, &parent);
    list.AddString("item");
    parent.ShowWindow(SW_SHOW);
    list.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    list.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(5, 5));

    EXPECT_EQ(list.m_changes, 1);
}

} // namespace
