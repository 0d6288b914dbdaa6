// What an opening of the sheet leaves behind: nothing, however it ends.
#include "applet/AppletTest.h"
#include "imports/ImportHook.h"
#include "support/ResourceCount.h"

#include <algorithm>
#include <cpl.h>
#include <vector>

namespace {

using support::ResourceCount;

class Leak : public AppletTest
{
  protected:
    // The first opening loads libraries and registers window classes, and the first painting makes brushes
    // and fonts, that stay.
    void SetUp() override
    {
        m_host.Open();
        RedrawWindow(m_host.Sheet().Window(), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
        m_host.PressCancel();
    }

    void OpenAndCancel()
    {
        m_host.Open();
        m_host.PressCancel();
    }

    // Repeats an action that must leave nothing. What leaks grows with every round; what Windows makes once
    // for itself, at a time of its own choosing, does not.
    template <typename Action>
    void ExpectNoGrowth(Action action)
    {
        constexpr int rounds = 3;
        for (int round = 1; round < rounds; ++round) {
            const ResourceCount before = CountSettled();
            action();
            if (!support::HasGrown(before, CountSettled()))
                return;
        }
        const ResourceCount before = CountSettled();
        action();
        m_host.Thread().Settle();
        ExpectNoLeak(before);
    }

    // Once the UI thread has put the last opening's job away, which holds handles.
    [[nodiscard]] ResourceCount CountSettled() const
    {
        m_host.Thread().Settle();
        return ResourceCount::Now();
    }

    // Opens the sheet on a machine that refuses its configuration: while the pages load, or when they are
    // saved.
    void OpenRefused()
    {
        m_machine.sasAgent.Delete();
        m_boxes.Answer(IDOK);
        m_host.DoubleClick();
        m_host.WaitForEnd();
        m_machine.sasAgent.SetDword("DisableFlags", 0);
    }

    void SaveRefused()
    {
        m_host.Open();
        m_machine.sasAgent.Delete();
        m_boxes.Answer(IDOK);
        m_host.PressOk();
        m_machine.sasAgent.SetDword("DisableFlags", 0);
    }
};

TEST_F(Leak, TwoOpeningsInARowLeaveNothing)
{
    ExpectNoGrowth([this] {
        OpenAndCancel();
        OpenAndCancel();
    });
}

TEST_F(Leak, EveryHookThatTheSheetInstallsIsRemoved)
{
    support::WindowsHookCount hooks(m_host.Module());
    OpenAndCancel();
    OpenRefused();
    SaveRefused();
    EXPECT_GT(hooks.Installed(), 0);
    EXPECT_EQ(hooks.Left(), 0);
}

TEST_F(Leak, ARefusalWhileLoadingLeavesNothing)
{
    ExpectNoGrowth([this] {
        OpenRefused();
        OpenAndCancel();
    });
}

TEST_F(Leak, ARefusedSaveLeavesNothing)
{
    ExpectNoGrowth([this] {
        SaveRefused();
        OpenAndCancel();
    });
}

TEST_F(Leak, MessagesThatOpenNothingLeaveNothing)
{
    ExpectNoGrowth([this] {
        CPLINFO info{};
        m_host.Send(CPL_INIT);
        m_host.Send(CPL_INQUIRE, 1, reinterpret_cast<LPARAM>(&info));
        m_host.Send(CPL_NEWINQUIRE);
    });
}

TEST_F(Leak, EachInitFreesTheLastHelpPath)
{
    std::vector<void*> copies;
    auto copy = support::HookImport<decltype(_strdup)>(m_host.Module(), "_strdup",
                                                       [&](auto original, const char* text) {
                                                           copies.push_back(original(text));
                                                           return static_cast<char*>(copies.back());
                                                       });
    std::vector<void*> freed;
    auto release =
        support::HookImport<decltype(free)>(m_host.Module(), "free", [&](auto original, void* memory) {
            freed.push_back(memory);
            original(memory);
        });
    m_host.Send(CPL_INIT);
    m_host.Send(CPL_INIT);
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_NE(std::find(freed.begin(), freed.end(), copies[0]), freed.end());
}

} // namespace
