// See the header.
#include "support/DialogDriver.h"

#include <cstring>
#include <stdexcept>

namespace support {
namespace {

// A list box and a combo box speak of the same things with other numbers.
struct ListMessages
{
    UINT count;
    UINT textLength;
    UINT text;
    UINT selection;
    UINT select;
    WORD selectionChanged;
};

constexpr ListMessages listBoxMessages{LB_GETCOUNT,  LB_GETTEXTLEN, LB_GETTEXT,
                                       LB_GETCURSEL, LB_SETCURSEL,  LBN_SELCHANGE};
constexpr ListMessages comboBoxMessages{CB_GETCOUNT,  CB_GETLBTEXTLEN, CB_GETLBTEXT,
                                        CB_GETCURSEL, CB_SETCURSEL,    CBN_SELCHANGE};

const ListMessages& MessagesOf(HWND control)
{
    char name[32] = "";
    GetClassNameA(control, &name[0], sizeof name);
    return _stricmp(&name[0], "ComboBox") == 0 ? comboBoxMessages : listBoxMessages;
}

std::string RowText(HWND control, const ListMessages& messages, WPARAM row)
{
    std::string text(static_cast<std::size_t>(SendWithin(control, messages.textLength, row)) + 1, '\0');
    SendWithin(control, messages.text, row, reinterpret_cast<LPARAM>(text.data()));
    return text.c_str();
}

DWORD WINAPI Notify(void* message)
{
    const auto& sent = *static_cast<const MSG*>(message);
    return static_cast<DWORD>(SendNotifyMessageA(sent.hwnd, sent.message, sent.wParam, sent.lParam));
}

} // namespace

LRESULT SendWithin(HWND window, UINT message, WPARAM wParam, LPARAM lParam, std::chrono::milliseconds limit)
{
    DWORD_PTR result = 0;
    if (SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, static_cast<UINT>(limit.count()),
                            &result) == 0)
        throw std::runtime_error("a window does not answer message " + std::to_string(message));
    return static_cast<LRESULT>(result);
}

void SendFromElsewhere(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    MSG sent{};
    sent.hwnd = window;
    sent.message = message;
    sent.wParam = wParam;
    sent.lParam = lParam;
    // On the window's own thread it would be handled at once. Not std::thread, which may call a Sleep that
    // the test has replaced.
    const HANDLE thread = CreateThread(nullptr, 0, &Notify, &sent, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

std::string WindowText(HWND window)
{
    std::string text(static_cast<std::size_t>(SendWithin(window, WM_GETTEXTLENGTH)) + 1, '\0');
    SendWithin(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return text.c_str();
}

HWND DialogDriver::Control(int id) const
{
    const HWND control = GetDlgItem(m_window, id);
    if (control == nullptr)
        throw std::runtime_error("no control " + std::to_string(id) + " in \"" + Title() + "\"");
    return control;
}

HWND DialogDriver::UsableControl(int id) const
{
    const HWND control = Control(id);
    const bool isUsable = IsWindowVisible(control) != FALSE && IsWindowEnabled(control) != FALSE &&
                          IsWindowEnabled(GetAncestor(control, GA_ROOT)) != FALSE;
    if (!isUsable)
        throw std::runtime_error("control " + std::to_string(id) + " in \"" + Title() +
                                 "\" is disabled or hidden");
    return control;
}

void DialogDriver::Click(int id) const
{
    // Posted as a real click is: a message that is sent would hold the test while a dialog is open.
    PostMessageA(UsableControl(id), BM_CLICK, 0, 0);
    m_thread->Settle();
}

void DialogDriver::Check(int id) const
{
    if (!IsChecked(id))
        Click(id);
}

void DialogDriver::Uncheck(int id) const
{
    if (IsChecked(id))
        Click(id);
}

bool DialogDriver::IsChecked(int id) const
{
    return SendWithin(Control(id), BM_GETCHECK) == BST_CHECKED;
}

void DialogDriver::SetText(int id, const std::string& text) const
{
    SendWithin(UsableControl(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void DialogDriver::Type(int id, const std::string& text) const
{
    Focus(id);
    for (const char character : text)
        PostMessageA(Control(id), WM_CHAR, static_cast<BYTE>(character), 1);
    m_thread->Settle();
}

void DialogDriver::Type(int id, const std::wstring& text) const
{
    Focus(id);
    Type(*m_thread, Control(id), text);
}

void DialogDriver::Type(const UiThread& thread, HWND control, const std::wstring& text)
{
    for (const wchar_t character : text)
        PostMessageW(control, WM_CHAR, character, 1);
    thread.Settle();
}

void DialogDriver::Focus(int id) const
{
    SendWithin(m_window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(UsableControl(id)), TRUE);
}

std::vector<std::string> DialogDriver::Items(int id) const
{
    const HWND control = Control(id);
    const ListMessages& messages = MessagesOf(control);
    std::vector<std::string> items(static_cast<std::size_t>(SendWithin(control, messages.count)));
    for (std::size_t row = 0; row < items.size(); ++row)
        items[row] = RowText(control, messages, row);
    return items;
}

int DialogDriver::Selection(int id) const
{
    const HWND control = Control(id);
    return static_cast<int>(SendWithin(control, MessagesOf(control).selection));
}

void DialogDriver::Select(int id, int row) const
{
    const HWND control = UsableControl(id);
    const ListMessages& messages = MessagesOf(control);
    if (row < 0 || row >= SendWithin(control, messages.count))
        throw std::runtime_error("no row " + std::to_string(row) + " in control " + std::to_string(id));
    SendWithin(control, messages.select, static_cast<WPARAM>(row));
    PostMessageA(m_window, WM_COMMAND, MAKEWPARAM(id, messages.selectionChanged),
                 reinterpret_cast<LPARAM>(control));
    m_thread->Settle();
}

} // namespace support
