// The F1 hook: which sheet the key reaches, also when one sheet is opened above another.
#include "applet/HelpKey.h"

#include <afxdlgs.h>
#include <gtest/gtest.h>

namespace {

// What stands for a sheet: takes messages, and is never seen.
class Sheet
{
  public:
    Sheet() { RecordSheetWindow(m_window); }
    ~Sheet()
    {
        RecordSheetWindow(nullptr);
        DestroyWindow(m_window);
    }
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    // How often it has been asked for help since the last question.
    [[nodiscard]] int HelpRequests() const
    {
        int requests = 0;
        MSG message{};
        while (PeekMessageA(&message, m_window, WM_COMMAND, WM_COMMAND, PM_REMOVE) != FALSE)
            requests += message.wParam == ID_HELP ? 1 : 0;
        return requests;
    }

  private:
    HWND m_window = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
};

// Shows the hooks the key as a dialog's message loop does.
void PressF1()
{
    MSG key{};
    key.message = WM_KEYDOWN;
    key.wParam = VK_F1;
    CallMsgFilterA(&key, MSGF_DIALOGBOX);
}

TEST(HelpKey, ReachesTheSheetOnce)
{
    const HelpKeyHook hook;
    const Sheet sheet;
    PressF1();
    EXPECT_EQ(sheet.HelpRequests(), 1);
}

TEST(HelpKey, ReachesNobodyAfterTheHooksEnd)
{
    const Sheet sheet;
    {
        const HelpKeyHook hook;
    }
    PressF1();
    EXPECT_EQ(sheet.HelpRequests(), 0);
}

TEST(HelpKey, BelongsToTheUpperSheetUntilItIsGone)
{
    const HelpKeyHook hook;
    const Sheet sheet;
    {
        const HelpKeyHook upperHook;
        PressF1(); // in a message box, say, before there is an upper sheet
        EXPECT_EQ(sheet.HelpRequests(), 0);
        const Sheet upperSheet;
        PressF1();
        EXPECT_EQ(upperSheet.HelpRequests(), 1);
        EXPECT_EQ(sheet.HelpRequests(), 0);
    }
    PressF1();
    EXPECT_EQ(sheet.HelpRequests(), 1);
}

} // namespace
