// A dialog created from the template of one language, hidden, with a look at its controls as the dialog
// manager made them.
#pragma once

#include <string>
#include <vector>
#include <windows.h>

struct DialogControl
{
    HWND window;
    int id;
    std::string windowClass;
    DWORD style; // as the template asks for it
    std::wstring text;
    RECT place; // pixels, in the dialog's client area

    [[nodiscard]] bool IsStatic() const { return windowClass == "Static"; }
    [[nodiscard]] bool IsGroupBox() const;
    [[nodiscard]] bool IsVisible() const { return (style & WS_VISIBLE) != 0; }
};

class DialogWindow
{
  public:
    // Throws std::runtime_error when there is no such dialog in this language, or when it cannot be created.
    DialogWindow(int id, LANGID language);
    ~DialogWindow();
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

    [[nodiscard]] int Id() const { return m_id; }
    [[nodiscard]] HWND Handle() const { return m_dialog; }
    // As the template asks for it.
    [[nodiscard]] DWORD Style() const { return m_style; }
    // In tab order.
    [[nodiscard]] const std::vector<DialogControl>& Controls() const { return m_controls; }

    // Throws std::out_of_range for a control that the dialog does not have.
    [[nodiscard]] const DialogControl& Control(int id) const;

    // Pixels that a rectangle in dialog units takes.
    [[nodiscard]] RECT ToPixels(RECT units) const;

    // Pixels that a text takes in the dialog's font, broken into lines at `width` when that is not 0; `flags`
    // are more flags of DrawText.
    [[nodiscard]] SIZE Measure(const std::wstring& text, int width = 0, UINT flags = 0) const;

  private:
    int m_id;
    HWND m_parent;
    HWND m_dialog;
    DWORD m_style;
    std::vector<DialogControl> m_controls;
};

// The letter behind the single ampersand of a text, in upper case; 0 when there is none.
[[nodiscard]] wchar_t AccessKey(const std::wstring& text);
// The same for a control: one that takes a text for an access key, that is.
[[nodiscard]] wchar_t AccessKey(const DialogControl& control);
