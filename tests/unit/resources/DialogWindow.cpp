// The dialog of DialogWindow.h.
#include "tests/unit/resources/DialogWindow.h"

#include "tests/unit/resources/ResourceReader.h"

#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <tuple>

namespace {

INT_PTR CALLBACK LeaveToDefault(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

std::wstring TextOf(HWND window)
{
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::string ClassOf(HWND window)
{
    char name[64] = {};
    GetClassNameA(window, name, sizeof name);
    return name;
}

RECT PlaceOf(HWND window, HWND dialog)
{
    RECT place;
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

std::vector<DialogControl> ControlsOf(HWND dialog, const std::vector<DWORD>& styles)
{
    std::vector<DialogControl> controls;
    HWND window = GetWindow(dialog, GW_CHILD);
    for (const DWORD style : styles) {
        controls.push_back(
            {window, GetDlgCtrlID(window), ClassOf(window), style, TextOf(window), PlaceOf(window, dialog)});
        window = GetWindow(window, GW_HWNDNEXT);
    }
    return controls;
}

// Made once and looked at by many tests, which change nothing about it.
const DialogWindow& LookOf(int id, LANGID language, int dpi)
{
    static std::map<std::tuple<int, LANGID, int>, DialogWindow> looks;
    return looks.try_emplace({id, language, dpi}, id, language, dpi).first->second;
}

} // namespace

bool DialogControl::IsGroupBox() const
{
    return windowClass == "Button" && (style & BS_TYPEMASK) == BS_GROUPBOX;
}

DialogWindow::DialogWindow(int id, LANGID language, int dpi)
    : m_id(id), m_language(language), m_dpi(dpi), m_template(ReadDialogTemplate(id, language)),
      m_parent(CreateWindowA("Static", "", WS_POPUP, 0, 0, 640, 480, nullptr, nullptr, nullptr, nullptr)),
      m_dialog(nullptr)
{
    // RT_DIALOG
    std::string bytes(FindResourceBytes(MAKEINTRESOURCEW(5), MAKEINTRESOURCEW(id), language));
    const auto points = static_cast<WORD>(Scale(m_template.pointSize));
    std::memcpy(&bytes[m_template.pointSizeAt], &points, sizeof points);
    m_dialog =
        CreateDialogIndirectParamW(GetModuleHandleW(nullptr), reinterpret_cast<LPCDLGTEMPLATEW>(bytes.data()),
                                   m_parent, LeaveToDefault, 0);
    if (m_dialog == nullptr)
        throw std::runtime_error("no dialog " + std::to_string(id) + " in " + LanguageName(language));
    m_controls = ControlsOf(m_dialog, m_template.controlStyles);
}

DialogWindow::~DialogWindow()
{
    DestroyWindow(m_dialog);
    DestroyWindow(m_parent);
}

const DialogControl& DialogWindow::Control(int id) const
{
    for (const DialogControl& control : m_controls) {
        if (control.id == id)
            return control;
    }
    throw std::out_of_range("no control " + std::to_string(id));
}

RECT DialogWindow::ToPixels(RECT units) const
{
    MapDialogRect(m_dialog, &units);
    return units;
}

SIZE DialogWindow::Measure(const std::wstring& text, int width, UINT flags) const
{
    const HDC context = GetDC(m_dialog);
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(m_dialog, WM_GETFONT, 0, 0));
    const HGDIOBJ before = SelectObject(context, font);
    RECT box = {0, 0, width, 0};
    flags |= DT_CALCRECT | DT_LEFT | (width != 0 ? DT_WORDBREAK : 0U);
    DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &box, flags);
    SelectObject(context, before);
    ReleaseDC(m_dialog, context);
    return {box.right, box.bottom};
}

void ForEachLook(int id, const std::function<void(const DialogWindow&)>& check)
{
    for (const LANGID language : {kEnglish, kJapanese}) {
        for (const int dpi : {kOrdinaryDpi, kHighDpi, kDoubleDpi}) {
            SCOPED_TRACE(std::string(LanguageName(language)) + ' ' + std::to_string(id) + " at " +
                         std::to_string(dpi) + " dpi");
            check(LookOf(id, language, dpi));
        }
    }
}

wchar_t AccessKey(const std::wstring& text)
{
    for (size_t at = text.find(L'&'); at != std::wstring::npos && at + 1 < text.size();
         at = text.find(L'&', at + 2))
    {
        if (text[at + 1] != L'&')
            return static_cast<wchar_t>(towupper(text[at + 1]));
    }
    return 0;
}

wchar_t AccessKey(const DialogControl& control)
{
    const bool showsAmpersand = control.IsStatic() && (control.style & SS_NOPREFIX) != 0;
    const bool takesKey = control.IsStatic() || control.windowClass == "Button";
    return takesKey && !showsAmpersand ? AccessKey(control.text) : L'\0';
}
