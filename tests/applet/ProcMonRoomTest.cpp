// A list box that has no room for another line: nothing is lost of what the Process Monitor page lists and
// what is stored.
#include "applet/ProcMonPageTest.h"
#include "imports/ImportHook.h"

#include <prsht.h>

namespace {

using namespace std::string_literals;

class ProcMonRoom : public ProcMonPageTest
{
  protected:
    ProcMonRoom() { Store(stored); }

    // From now on the list box takes `room` lines by this message, and answers `refusal` to the others.
    auto Limit(UINT message, int room, LRESULT refusal = LB_ERRSPACE)
    {
        return support::HookImport<decltype(SendMessageA)>(
            m_host.Module(), "SendMessageA",
            [=](auto original, HWND window, UINT sent, WPARAM wParam, LPARAM lParam) mutable {
                const bool isRefused = sent == message && room-- <= 0;
                return isRefused ? refusal : original(window, sent, wParam, lParam);
            });
    }

    const std::string stored = "\x01"s
                               "a\0\x82"s
                               "b\0"s;
    const Rows listed = {"a\tStart", "b\tStop"};
};

class ProcMonRoomLoad : public ProcMonRoom, public testing::WithParamInterface<LRESULT>
{
};

TEST_P(ProcMonRoomLoad, RefusesAConfigurationThatItCannotListWhole)
{
    const auto limit = Limit(LB_ADDSTRING, 1, GetParam());
    m_host.Open();
    m_boxes.Answer(IDOK);
    PostMessageA(m_host.Sheet().Window(), PSM_SETCURSELID, 0, IDD_PROCMON);
    m_host.WaitForEnd();
    ASSERT_EQ(m_boxes.Shown().size(), 1U);
    EXPECT_EQ(m_boxes.Shown()[0].caption, "Management Agents Error");
    ExpectStored(stored);
}

INSTANTIATE_TEST_SUITE_P(Refusals, ProcMonRoomLoad, testing::Values(LRESULT{LB_ERRSPACE}, LRESULT{LB_ERR}));

TEST_F(ProcMonRoom, AddOpensNoEditWithoutALineForIt)
{
    Open();
    const auto limit = Limit(LB_ADDSTRING, 0);
    PressAdd();
    EXPECT_EQ(Page().Text(IDC_PROCMON_ADD), "&Add");
    EXPECT_EQ(InPlaceEdit(), nullptr);
    EXPECT_EQ(Items(), listed);
    PressAdd();
    m_host.Sheet().Click(IDOK);
    m_host.PressOk();
    ExpectStored(stored);
}

TEST_F(ProcMonRoom, ANameWithoutRoomLeavesTheOthers)
{
    Open();
    const auto limit = Limit(LB_ADDSTRING, 1);
    Add("new");
    EXPECT_EQ(Page().Text(IDC_PROCMON_ADD), "&Add");
    EXPECT_EQ(Items(), listed);
    EXPECT_EQ(CheckedOption(), "Start");
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_DELETE));
    m_host.PressOk();
    ExpectStored(stored);
}

TEST_F(ProcMonRoom, AnOptionWithoutRoomLeavesTheOldOne)
{
    Open();
    Select(1);
    const auto limit = Limit(LB_INSERTSTRING, 0);
    Page().Click(IDC_PROCMON_START_STOP);
    EXPECT_EQ(Items(), listed);
    EXPECT_EQ(CheckedOption(), "Stop");
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), 1);
    m_host.PressOk();
    ExpectStored(stored);
}

} // namespace
