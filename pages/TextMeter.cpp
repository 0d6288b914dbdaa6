// Measuring of texts; see the header.
#include "pages/TextMeter.h"

TextMeter::TextMeter(const CWnd& window)
    : m_window(window.m_hWnd), m_context(GetDC(m_window)),
      m_formerFont(SelectObject(m_context, reinterpret_cast<HGDIOBJ>(window.SendMessage(WM_GETFONT))))
{
}

TextMeter::~TextMeter()
{
    SelectObject(m_context, m_formerFont);
    ReleaseDC(m_window, m_context);
}

int TextMeter::WidthOf(const std::string& text) const
{
    SIZE size{};
    GetTextExtentPoint32A(m_context, text.c_str(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
}
