// The applet as the system's own Control Panel program opens it.
#include "applet/AppletTest.h"
#include "support/UiThread.h"

namespace {

constexpr char sheetTitle[] = "Management Agents for Servers Version " VTN_TEST_VERSION " - Windows";

// control.exe with the applet, in a process of its own.
class ControlPanel
{
  public:
    ControlPanel()
    {
        std::string commandLine = "control.exe \"" + appletPath + "\"";
        STARTUPINFOA start{};
        start.cb = sizeof start;
        if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                            &m_process))
            throw std::runtime_error("control.exe does not start");
    }
    ~ControlPanel()
    {
        TerminateProcess(m_process.hProcess, 1);
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
    }
    ControlPanel(const ControlPanel&) = delete;
    ControlPanel& operator=(const ControlPanel&) = delete;

    bool WaitForEnd() const
    {
        return WaitForSingleObject(m_process.hProcess, static_cast<DWORD>(support::defaultLimit.count())) ==
               WAIT_OBJECT_0;
    }

  private:
    PROCESS_INFORMATION m_process{};
};

// The window with this title once it is on the screen; null when it does not appear.
HWND WaitForWindow(const char* title)
{
    HWND window = nullptr;
    const auto appears = [&] {
        window = FindWindowA(nullptr, title);
        return window != nullptr && IsWindowVisible(window) != FALSE;
    };
    return support::WaitUntil(appears) ? window : nullptr;
}

TEST(ControlPanel, OpensTheSheetAndEndsWithIt)
{
    const TestMachine machine;
    const ControlPanel controlPanel;
    const HWND sheet = WaitForWindow(sheetTitle);
    ASSERT_NE(sheet, nullptr);
    PostMessageA(sheet, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(controlPanel.WaitForEnd());
    EXPECT_EQ(FindWindowA(nullptr, sheetTitle), nullptr);
}

} // namespace
