// A dialog or property page as its user handles it: looks at controls by their ids, presses and fills them.
// Used through AppletHost on pages, sheets and the dialogs that they open.
#pragma once

#include "support/UiThread.h"

#include <string>
#include <vector>
#include <windows.h>

namespace support {

// Sends a message with a time limit; throws std::runtime_error when the window does not answer within it.
LRESULT SendWithin(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0,
                   std::chrono::milliseconds limit = defaultLimit);

// Sends a message as another program does that does not wait for the answer: the window's thread finds it
// when it next looks for messages.
void SendFromElsewhere(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// Text of any window of this process, whatever thread it belongs to.
[[nodiscard]] std::string WindowText(HWND window);

// One dialog window of the UI thread; as short-lived as the window. Controls are named by id, and an id that
// the dialog does not have throws std::runtime_error. What a user could not do (press a disabled or hidden
// control) throws, too. All actions return when the thread has handled them; one that opens a dialog, when
// that is there.
class DialogDriver
{
  public:
    DialogDriver(const UiThread& thread, HWND window) : m_thread(&thread), m_window(window) {}

    [[nodiscard]] HWND Window() const { return m_window; }
    [[nodiscard]] std::string Title() const { return WindowText(m_window); }
    [[nodiscard]] bool Has(int id) const { return GetDlgItem(m_window, id) != nullptr; }
    [[nodiscard]] HWND Control(int id) const;
    [[nodiscard]] bool IsEnabled(int id) const { return IsWindowEnabled(Control(id)) != FALSE; }
    [[nodiscard]] bool IsVisible(int id) const { return IsWindowVisible(Control(id)) != FALSE; }

    void Click(int id) const;
    // Check boxes and radio buttons, pressed only when that changes them.
    void Check(int id) const;
    void Uncheck(int id) const;
    [[nodiscard]] bool IsChecked(int id) const;

    [[nodiscard]] std::string Text(int id) const { return WindowText(Control(id)); }
    // Puts `text` in place of an edit control's text.
    void SetText(int id, const std::string& text) const;
    // Types the characters of `text` one by one, as keys.
    void Type(int id, const std::string& text) const;
    // The same with any characters, whatever the code page; also into a control that stands elsewhere.
    void Type(int id, const std::wstring& text) const;
    static void Type(const UiThread& thread, HWND control, const std::wstring& text);
    // Gives the control the focus as the Tab key does.
    void Focus(int id) const;

    // The rows of a list box, or of a combo box's list.
    [[nodiscard]] std::vector<std::string> Items(int id) const;
    // The chosen row of a list box or combo box; -1 when none is.
    [[nodiscard]] int Selection(int id) const;
    // Chooses a row as a user does: the dialog is notified.
    void Select(int id, int row) const;

  private:
    [[nodiscard]] HWND UsableControl(int id) const;

    const UiThread* m_thread;
    HWND m_window;
};

} // namespace support
