// The Services page with the keyboard alone.
#include "applet/ServicesPageTest.h"

#include "imports/ImportHook.h"

#include <random>

namespace {

// --- access keys

TEST_F(ServicesPageMove, AltCAndAltIReachTheLists)
{
    Open();
    PressAltKeys("I");
    EXPECT_EQ(Focus(), inactiveList);
    PressAltKeys("C");
    EXPECT_EQ(Focus(), activeList);
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, AltRMovesAgentsOneAfterTheOther)
{
    const DialogDriver page = Open();
    PressAltKeys("C");
    PressAltKeys("R");
    ExpectLists(page, {"VTNB"}, {"VTNC", "VTNMHOST", "VTNA"});
    PressAltKeys("R");
    ExpectLists(page, {}, {"VTNC", "VTNMHOST", "VTNA", "VTNB"});
    EXPECT_TRUE(page.IsEnabled(Focus()));
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, AltAMovesTheSelectedAgent)
{
    const DialogDriver page = Open();
    PressAltKeys("I");
    m_host.PressKey(VK_DOWN);
    PressAltKeys("A");
    ExpectLists(page, {"VTNA", "VTNB", "VTNMHOST"}, {"VTNC"});
    PressAltKeys("A");
    ExpectLists(page, {"VTNA", "VTNB", "VTNMHOST", "VTNC"}, {});
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, TheKeysOfAnEmptyListDoNothing)
{
    const DialogDriver page = Open();
    page.Click(removeButton);
    page.Click(removeButton);
    const int focus = Focus();
    PressAltKeys("C");
    PressAltKeys("R");
    EXPECT_EQ(Focus(), focus);
    EXPECT_EQ(page.Items(inactiveList).size(), 4U);
    m_host.PressCancel();
}

// --- Tab, Enter and Escape

class ServicesPageKeys : public ServicesPageMove
{
  protected:
    // Presses Tab so many times; where the focus was on the way, from where it started.
    std::vector<int> TabThrough(int times)
    {
        std::vector<int> stops{Focus()};
        for (int i = 0; i < times; ++i) {
            m_host.PressKey(VK_TAB);
            stops.push_back(Focus());
        }
        return stops;
    }
};

TEST_F(ServicesPageKeys, TabGoesFromActiveAgentsToInactiveOnes)
{
    Open();
    PressAltKeys("C");
    EXPECT_EQ(TabThrough(4), (std::vector<int>{activeList, removeButton, inactiveList, addButton, IDOK}));
    m_host.PressCancel();
}

TEST_F(ServicesPageKeys, TabLeavesOutTheSideThatIsEmpty)
{
    Open();
    PressAltKeys("RRI");
    EXPECT_EQ(TabThrough(2), (std::vector<int>{inactiveList, addButton, IDOK}));
    PressAltKeys("A");
    EXPECT_EQ(Focus(), addButton);
    m_host.PressCancel();
}

TEST_F(ServicesPageKeys, EnterInAListIsOk)
{
    Open();
    PressAltKeys("RC");
    m_host.PressKey(VK_RETURN);
    m_host.WaitForEnd();
    ExpectSaved(m_agents, "VtMgHost", {"VTNB"});
}

TEST_F(ServicesPageKeys, EnterOnAButtonPressesIt)
{
    const DialogDriver page = Open();
    PressAltKeys("C");
    m_host.PressKey(VK_TAB);
    m_host.PressKey(VK_RETURN);
    ExpectLists(page, {"VTNB"}, {"VTNC", "VTNMHOST", "VTNA"});
    m_host.PressCancel();
}

TEST_F(ServicesPageKeys, EnterPressesTheButtonThatTookTheFocusOver)
{
    const DialogDriver page = Open();
    PressAltKeys("AA");
    EXPECT_EQ(Focus(), removeButton);
    m_host.PressKey(VK_RETURN);
    ExpectLists(page, {"VTNB", "VTNC", "VTNMHOST"}, {"VTNA"});
    m_host.PressCancel();
}

TEST_F(ServicesPageKeys, EscapeWritesNothing)
{
    Open();
    PressAltKeys("RC");
    m_host.PressKey(VK_ESCAPE);
    m_host.WaitForEnd();
    support::ExpectAbsent(m_agents.Service("VtMgHost"), "Start");
    support::ExpectMultiString(m_agents.Parameters("VtMgHost"), "SubServices", {"VTNA", "VTNB"});
}

TEST_F(ServicesPageKeys, ArrowKeysChooseWhatIsMovedAndSaved)
{
    Open();
    PressAltKeys("C");
    m_host.PressKey(VK_DOWN);
    PressAltKeys("R");
    PressAltKeys("I");
    m_host.PressKey(VK_END);
    m_host.PressKey(VK_UP);
    PressAltKeys("A");
    PressAltKeys("C");
    m_host.PressKey(VK_RETURN);
    m_host.WaitForEnd();
    ExpectSaved(m_agents, "VtMgHost", {"VTNA", "VTNMHOST"});
}

// --- where the focus starts

TEST_F(ServicesPageKeys, StartOnTheActiveAgents)
{
    Open();
    EXPECT_EQ(Focus(), activeList);
    m_host.PressCancel();
}

TEST_F(ServicesPageKeys, StartOnTheFirstUsableControl)
{
    m_agents.SetActive("VtMgHost", {});
    Open();
    EXPECT_EQ(Focus(), inactiveList);
    m_host.PressCancel();
}

TEST_F(ServicesPageKeys, StartOutsideThePageWhenThereAreNoAgents)
{
    auto end = support::HookImport<decltype(RegEnumKeyA)>(
        m_host.Module(), "RegEnumKeyA",
        [](auto, HKEY, DWORD, LPSTR, DWORD) -> LSTATUS { return ERROR_NO_MORE_ITEMS; });
    const DialogDriver page = Open();
    const HWND focus = m_host.Thread().Focus();
    EXPECT_TRUE(IsWindowEnabled(focus));
    EXPECT_FALSE(IsChild(page.Window(), focus));
    m_host.PressCancel();
}

// --- any keys

class ServicesPageAnyKeys : public ServicesPageKeys, public testing::WithParamInterface<unsigned>
{
  protected:
    void PressAnyKey()
    {
        constexpr std::array<WORD, 4> altKeys{'C', 'I', 'A', 'R'};
        constexpr std::array<WORD, 3> keys{VK_DOWN, VK_UP, VK_SPACE};
        const std::size_t choice = m_random() % (altKeys.size() + keys.size());
        if (choice < altKeys.size())
            m_host.PressKeyWithAlt(altKeys[choice]);
        else
            m_host.PressKey(keys[choice - altKeys.size()]);
    }

    // A list with agents has one selected and can be used; one without is disabled with its button.
    void ExpectUsableSide(const DialogDriver& page, int list, int button) const
    {
        const auto count = static_cast<int>(page.Items(list).size());
        const int selection = page.Selection(list);
        EXPECT_TRUE(count == 0 ? selection == -1 : selection >= 0 && selection < count) << selection;
        EXPECT_EQ(page.IsEnabled(list), count > 0);
        EXPECT_EQ(page.IsEnabled(button), count > 0);
    }

    std::mt19937 m_random{GetParam()};
};

TEST_P(ServicesPageAnyKeys, KeepFocusAndAgentsInPlace)
{
    const DialogDriver page = Open();
    PressAltKeys("C");
    for (int i = 0; i < 25; ++i) {
        PressAnyKey();
        ASSERT_TRUE(page.IsEnabled(Focus())) << Focus();
        ExpectUsableSide(page, activeList, removeButton);
        ExpectUsableSide(page, inactiveList, addButton);
        ASSERT_EQ(page.Items(activeList).size() + page.Items(inactiveList).size(), 4U);
    }
    m_host.PressCancel();
}

INSTANTIATE_TEST_SUITE_P(Seeds, ServicesPageAnyKeys, testing::Values(1U, 2U));

} // namespace
