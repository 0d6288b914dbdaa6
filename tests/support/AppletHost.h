// Stands in for Control Panel: loads an applet, sends it the messages that Control Panel sends, and lets a
// test use its property sheet. For the tests of the whole applet.
//
//     AppletHost host("vtnmgmt.cpl");
//     MessageBoxScript boxes(host.Module());
//     host.Open();
//     host.Page("Storage").Check(1059);
//     host.PressOk();
#pragma once

#include "imports/ImportHook.h"
#include "support/DialogDriver.h"
#include "support/UiThread.h"

#include <future>
#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <vector>
#include <windows.h>

// It needs windows.h before it.
#include <cpl.h>

namespace support {

// An applet library with one applet. Every wait has a time limit, and what goes wrong throws
// std::runtime_error. Declare the host before the scripts that hook its module: at the end of a failed test
// it closes the sheet by itself, and the hooks are gone by then.
class AppletHost
{
  public:
    // Loads the library, sends CPL_INIT, CPL_GETCOUNT, CPL_INQUIRE and CPL_NEWINQUIRE as Control Panel does.
    explicit AppletHost(const std::string& path);
    // Closes what is still open (a failure of the test), sends CPL_STOP and CPL_EXIT, unloads the library.
    ~AppletHost();
    AppletHost(const AppletHost&) = delete;
    AppletHost& operator=(const AppletHost&) = delete;

    [[nodiscard]] HMODULE Module() const { return m_module; }
    [[nodiscard]] HWND Frame() const { return m_thread.Frame(); }
    [[nodiscard]] const UiThread& Thread() const { return m_thread; }

    // The command line of the process as the library sees it from now on.
    void SetCommandLine(const std::string& commandLine);

    // Sends a message to CPlApplet on the UI thread and returns the answer.
    LONG Send(UINT message, LPARAM first = 0, LPARAM second = 0);
    // The answer to CPL_INQUIRE at the start.
    [[nodiscard]] const CPLINFO& Info() const { return m_info; }

    // Sends CPL_DBLCLK and returns at once.
    void DoubleClick();
    // Sends CPL_DBLCLK and returns when the sheet is on the screen; throws when CPlApplet returns without
    // one.
    void Open();
    // Waits until CPL_DBLCLK has ended; its answer. What CPlApplet threw is thrown again.
    LONG WaitForEnd();
    [[nodiscard]] bool HasEnded() const;

    // The sheet's own window with its buttons (IDOK, IDCANCEL, IDHELP).
    [[nodiscard]] DialogDriver Sheet() const;
    [[nodiscard]] std::vector<std::string> Tabs() const;
    // Text of the tab in front.
    [[nodiscard]] std::string ActiveTab() const;
    // Turns to the page with this tab; false when the page in front does not let go.
    [[nodiscard]] bool TurnTo(const std::string& tab) const;
    // Turns to the page with this tab and returns it; throws when the page in front does not let go.
    DialogDriver Page(const std::string& tab) const;
    // The page in front.
    [[nodiscard]] DialogDriver ActivePage() const;
    // Waits for a dialog above the sheet whose title is `title`.
    [[nodiscard]] DialogDriver WaitForDialog(const std::string& title) const;

    // Each presses the sheet's button and waits for the end of CPL_DBLCLK; its answer. To press OK on a page
    // that refuses it, use Sheet().Click(IDOK).
    LONG PressOk();
    LONG PressCancel();
    // The cross in the title bar.
    LONG Close();

    // Presses a key in the control that has the focus, as a key message, and waits until it is handled.
    void PressKey(WORD key) const;
    // The same while Alt is down: a control's access key, for one.
    void PressKeyWithAlt(WORD key) const;
    // The same while other keys (VK_CONTROL, VK_SHIFT) are down, which the system's own windows ask for, too.
    void PressKeyWith(std::initializer_list<BYTE> held, WORD key) const;
    // Where the library asks GetKeyState, these keys (VK_SHIFT, VK_CONTROL) are down from now on.
    void HoldKeys(std::set<int> keys);

  private:
    static LPSTR WINAPI CommandLine();
    static SHORT WINAPI KeyState(int key);
    void Load(const std::string& path);
    void PostKey(UINT pressed, UINT released, WORD key, LPARAM state) const;
    LONG Wait(std::future<LONG>& answer);
    LONG PressAndWait(int button);
    [[nodiscard]] HWND FindSheet() const;
    [[nodiscard]] HWND TabControl() const;

    UiThread m_thread;
    HMODULE m_module = nullptr;
    APPLET_PROC m_applet = nullptr;
    CPLINFO m_info{};
    std::future<LONG> m_answer;
    std::string m_commandLine;
    std::set<int> m_heldKeys;
    Turn<AppletHost> m_turn;
    std::optional<ReplacedImport> m_getCommandLine;
    std::optional<ReplacedImport> m_getKeyState;
};

} // namespace support
