// A dialog created from the template of one language, hidden, with a look at its controls as the dialog
// manager made them.
#pragma once

#include "tests/unit/resources/DialogTemplate.h"

#include <functional>
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

// The resolution of ordinary screens, and those of finer ones: text takes half as much room again, and twice
// as much.
constexpr int kOrdinaryDpi = 96;
constexpr int kHighDpi = 144;
constexpr int kDoubleDpi = 192;

class DialogWindow
{
  public:
    // As it is laid out at `dpi` dots per inch, whatever the screen has: with letters of that size, from
    // which Windows takes the dialog units. Throws std::runtime_error when there is no such dialog in this
    // language, or when it cannot be created.
    DialogWindow(int id, LANGID language, int dpi = kOrdinaryDpi);
    ~DialogWindow();
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

    [[nodiscard]] int Id() const { return m_id; }
    [[nodiscard]] LANGID Language() const { return m_language; }
    [[nodiscard]] HWND Handle() const { return m_dialog; }
    // As the template asks for it.
    [[nodiscard]] DWORD Style() const { return m_template.style; }
    // In tab order.
    [[nodiscard]] const std::vector<DialogControl>& Controls() const { return m_controls; }

    // Throws std::out_of_range for a control that the dialog does not have.
    [[nodiscard]] const DialogControl& Control(int id) const;

    // Pixels at the dialog's resolution of what takes `pixels` at the ordinary one.
    [[nodiscard]] int Scale(int pixels) const { return MulDiv(pixels, m_dpi, kOrdinaryDpi); }

    // Pixels that a rectangle in dialog units takes.
    [[nodiscard]] RECT ToPixels(RECT units) const;

    // Pixels that a text takes in the dialog's font, broken into lines at `width` when that is not 0; `flags`
    // are more flags of DrawText.
    [[nodiscard]] SIZE Measure(const std::wstring& text, int width = 0, UINT flags = 0) const;

  private:
    int m_id;
    LANGID m_language;
    int m_dpi;
    DialogTemplate m_template;
    HWND m_parent;
    HWND m_dialog;
    std::vector<DialogControl> m_controls;
};

// Calls `check` with a dialog in each language at each resolution; failures name the one it was.
void ForEachLook(int id, const std::function<void(const DialogWindow&)>& check);

// The letter behind the single ampersand of a text, in upper case; 0 when there is none.
[[nodiscard]] wchar_t AccessKey(const std::wstring& text);
// The same for a control: one that takes a text for an access key, that is.
[[nodiscard]] wchar_t AccessKey(const DialogControl& control);
