// How wide texts are in the font of a control.
#pragma once

#include <afxwin.h>
#include <string>

// Measures in the font in which `window` shows its texts. Lives for one round of measuring: it takes a device
// context.
class TextMeter
{
  public:
    // `window` is to outlive it.
    explicit TextMeter(const CWnd& window);
    ~TextMeter();
    TextMeter(const TextMeter&) = delete;
    TextMeter& operator=(const TextMeter&) = delete;

    // In pixels.
    [[nodiscard]] int WidthOf(const std::string& text) const;

  private:
    HWND m_window;
    HDC m_context;
    HGDIOBJ m_formerFont;
};
