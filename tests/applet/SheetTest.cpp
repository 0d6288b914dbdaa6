// One opening of the sheet: title, tabs, buttons, how it ends, and what it leaves behind.
#include "applet/AppletTest.h"
#include "imports/ImportHook.h"
#include "resources/resource.h"

#include <commctrl.h>
#include <cpl.h>
#include <stdexcept>

namespace {

using Sheet = AppletTest;
using support::ExpectDword;

constexpr int applyButton = 0x3021;
constexpr int tabControl = 0x3020;

constexpr char errorCaption[] = "Management Agents Error";

support::ShownBox RefusalBox()
{
    return {nullptr, accessDenied, errorCaption, MB_ICONHAND};
}

// --- title

TEST_F(Sheet, ShowsItsFilesVersionInTheTitle)
{
    m_host.Open();
    EXPECT_EQ(m_host.Sheet().Title(), "Management Agents for Servers Version " VTN_TEST_VERSION " - Windows");
    m_host.PressCancel();
}

TEST_F(Sheet, HasATitleWithoutAnUnreadableVersion)
{
    auto hook = support::HookImport<decltype(VerQueryValueA)>(
        m_host.Module(), "VerQueryValueA", [](auto, LPCVOID, LPCSTR, LPVOID*, PUINT) { return FALSE; });
    m_host.Open();
    EXPECT_EQ(m_host.Sheet().Title(), "Management Agents for Servers Version  - Windows");
    m_host.PressCancel();
}

TEST_F(Sheet, HasATitleWithoutAVersionBlock)
{
    auto hook = support::HookImport<decltype(GetFileVersionInfoSizeA)>(
        m_host.Module(), "GetFileVersionInfoSizeA", [](auto, LPCSTR, LPDWORD) { return DWORD{0}; });
    m_host.Open();
    EXPECT_EQ(m_host.Sheet().Title(), "Management Agents for Servers Version  - Windows");
    m_host.PressCancel();
}

// --- buttons and keys

RECT PlaceOf(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

TEST_F(Sheet, ShowsHelpInPlaceOfApply)
{
    m_host.Open();
    const support::DialogDriver sheet = m_host.Sheet();
    EXPECT_FALSE(sheet.IsVisible(applyButton));
    EXPECT_FALSE(sheet.IsEnabled(applyButton));
    EXPECT_TRUE(sheet.IsVisible(IDHELP));
    EXPECT_TRUE(sheet.IsEnabled(IDHELP));
    EXPECT_EQ(PlaceOf(sheet.Control(IDHELP)).left, PlaceOf(sheet.Control(applyButton)).left);
    EXPECT_EQ(PlaceOf(sheet.Control(IDHELP)).top, PlaceOf(sheet.Control(applyButton)).top);
    m_host.PressCancel();
}

TEST_F(Sheet, TheRowOfButtonsEndsWhereTheTabsEnd)
{
    m_host.Open();
    const support::DialogDriver sheet = m_host.Sheet();
    EXPECT_EQ(PlaceOf(sheet.Control(IDHELP)).right, PlaceOf(sheet.Control(tabControl)).right);
    const LONG width = PlaceOf(sheet.Control(IDCANCEL)).left - PlaceOf(sheet.Control(IDOK)).left;
    EXPECT_EQ(PlaceOf(sheet.Control(IDHELP)).left - PlaceOf(sheet.Control(IDCANCEL)).left, width);
    m_host.PressCancel();
}

TEST_F(Sheet, IsModalToTheControlPanelsWindow)
{
    m_host.Open();
    EXPECT_EQ(GetWindow(m_host.Sheet().Window(), GW_OWNER), m_host.Frame());
    EXPECT_FALSE(IsWindowEnabled(m_host.Frame()));
    m_host.PressCancel();
    EXPECT_TRUE(IsWindowEnabled(m_host.Frame()));
}

TEST_F(Sheet, GivesTheFocusBackWhereItWas)
{
    std::vector<HWND> focused;
    auto before = support::HookImport<decltype(GetFocus)>(m_host.Module(), "GetFocus",
                                                          [&](auto) { return m_host.Frame(); });
    auto after =
        support::HookImport<decltype(SetFocus)>(m_host.Module(), "SetFocus", [&](auto original, HWND window) {
            focused.push_back(window);
            return original(window);
        });
    m_host.Open();
    focused.clear();
    m_host.PressCancel();
    EXPECT_EQ(focused, std::vector<HWND>{m_host.Frame()});
}

// --- how it ends

TEST_F(Sheet, CancelSavesNothing)
{
    m_host.Open();
    m_host.Page("Storage").Check(IDC_STORAGE_FIBRE_TAPE);
    EXPECT_EQ(m_host.PressCancel(), 0);
    ExpectDword(m_machine.fibreAgent, "DisableFlags", 0);
}

TEST_F(Sheet, TheCrossSavesNothing)
{
    m_host.Open();
    m_host.Page("Storage").Check(IDC_STORAGE_FIBRE_TAPE);
    EXPECT_EQ(m_host.Close(), 0);
    ExpectDword(m_machine.fibreAgent, "DisableFlags", 0);
}

// --- refusals

TEST_F(Sheet, ReportsARefusedLoadAndDoesNotOpen)
{
    m_machine.sasAgent.Delete();
    m_boxes.Answer(IDOK);
    m_host.DoubleClick();
    EXPECT_EQ(m_host.WaitForEnd(), 0);
    support::ExpectBoxes(m_boxes, {RefusalBox()});
}

TEST_F(Sheet, EndsAndReportsOnceAfterARefusedSave)
{
    m_host.Open();
    m_host.Page("Storage").Check(IDC_STORAGE_FIBRE_TAPE);
    m_machine.sasAgent.Delete();
    m_boxes.Answer(IDOK);
    EXPECT_EQ(m_host.PressOk(), 0);
    support::ExpectBoxes(m_boxes, {RefusalBox()});
    EXPECT_EQ(m_boxes.Shown().at(0).owner, m_host.Frame());
    ExpectDword(m_machine.fibreAgent, "DisableFlags", 1);
}

TEST_F(Sheet, OpensAgainAfterARefusal)
{
    m_host.Open();
    m_machine.sasAgent.Delete();
    m_boxes.Answer(IDOK);
    m_host.PressOk();
    m_machine.sasAgent.SetDword("DisableFlags", 4);
    m_host.Open();
    EXPECT_TRUE(m_host.Page("Storage").IsChecked(IDC_STORAGE_SAS_TAPE));
    m_host.PressOk();
}

TEST_F(Sheet, PassesOtherExceptionsOnAndOpensAgain)
{
    {
        auto hook = support::HookImport<decltype(VerQueryValueA)>(
            m_host.Module(), "VerQueryValueA",
            [](auto, LPCVOID, LPCSTR, LPVOID*, PUINT) -> BOOL { throw std::runtime_error("not a refusal"); });
        m_host.DoubleClick();
        EXPECT_THROW(m_host.WaitForEnd(), std::runtime_error);
    }
    m_host.Open();
    m_host.PressCancel();
}

// --- one above the other

// The host's window, which opens the applet on request, while a sheet is up too.
class OpeningFrame
{
  public:
    explicit OpeningFrame(const support::AppletHost& host)
        : m_frame(host.Frame()),
          m_former(SetWindowLongPtrA(m_frame, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)))
    {
        applet = reinterpret_cast<APPLET_PROC>(
            reinterpret_cast<void*>(GetProcAddress(host.Module(), "CPlApplet")));
        former = reinterpret_cast<WNDPROC>(m_former);
    }
    ~OpeningFrame() { SetWindowLongPtrA(m_frame, GWLP_WNDPROC, m_former); }
    OpeningFrame(const OpeningFrame&) = delete;
    OpeningFrame& operator=(const OpeningFrame&) = delete;

    void TellToOpen() const { PostMessageA(m_frame, openMessage, 0, 0); }

  private:
    static constexpr UINT openMessage = WM_APP + 100;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        return message == openMessage ? applet(window, CPL_DBLCLK, 0, 0)
                                      : CallWindowProcA(former, window, message, wParam, lParam);
    }

    static inline APPLET_PROC applet = nullptr;
    static inline WNDPROC former = nullptr;
    HWND m_frame;
    LONG_PTR m_former;
};

TEST_F(Sheet, OpenedAboveAnotherLeavesThatUsable)
{
    const OpeningFrame frame(m_host);
    m_host.Open();
    const HWND lower = m_host.Sheet().Window();
    frame.TellToOpen();
    ASSERT_TRUE(support::WaitUntil([&] { return m_host.Sheet().Window() != lower; }));
    m_host.Thread().Settle();
    EXPECT_EQ(GetWindow(m_host.Sheet().Window(), GW_OWNER), m_host.Frame());
    m_host.Sheet().Click(IDCANCEL);
    ASSERT_TRUE(support::WaitUntil([&] { return m_host.Sheet().Window() == lower; }));
    EXPECT_FALSE(IsWindowEnabled(m_host.Frame()));
    m_host.Page("Storage").Click(IDC_STORAGE_SAS_TAPE);
    EXPECT_TRUE(m_host.Page("Storage").IsChecked(IDC_STORAGE_SAS_TAPE));
    m_host.PressCancel();
    EXPECT_TRUE(IsWindowEnabled(m_host.Frame()));
}

} // namespace
