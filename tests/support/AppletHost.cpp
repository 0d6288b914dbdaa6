// See the header.
#include "support/AppletHost.h"

#include "support/Expect.h"

#include <algorithm>
#include <array>
#include <commctrl.h>
#include <stdexcept>
#include <utility>

namespace support {
namespace {

HWND TabControlOf(HWND window)
{
    return FindWindowExA(window, nullptr, WC_TABCONTROLA, nullptr);
}

HWND CurrentPage(HWND sheet)
{
    return reinterpret_cast<HWND>(SendWithin(sheet, PSM_GETCURRENTPAGEHWND));
}

std::string TabText(HWND tabs, WPARAM index)
{
    std::array<char, 256> text{};
    TCITEMA item{};
    item.mask = TCIF_TEXT;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendWithin(tabs, TCM_GETITEMA, index, reinterpret_cast<LPARAM>(&item));
    return text.data();
}

// Keys that are down for the windows of another thread for as long as this lives.
class HeldKeys
{
  public:
    HeldKeys(DWORD thread, std::initializer_list<BYTE> keys) : m_thread(thread), m_keys(keys)
    {
        if (AttachThreadInput(GetCurrentThreadId(), m_thread, TRUE) == FALSE)
            throw std::runtime_error("the keyboard of the UI thread cannot be shared");
        Set(isDown);
    }
    ~HeldKeys()
    {
        Set(0);
        AttachThreadInput(GetCurrentThreadId(), m_thread, FALSE);
    }
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;

  private:
    static constexpr BYTE isDown = 0x80;

    void Set(BYTE state) const
    {
        std::array<BYTE, 256> keyboard{};
        GetKeyboardState(keyboard.data());
        for (const BYTE key : m_keys)
            keyboard.at(key) = state;
        SetKeyboardState(keyboard.data());
    }

    DWORD m_thread;
    std::vector<BYTE> m_keys;
};

} // namespace

AppletHost::AppletHost(const std::string& path) : m_turn(this)
{
    m_answer = m_thread.Start([&] {
        Load(path);
        return m_applet(Frame(), CPL_INIT, 0, 0);
    });
    if (WaitForEnd() == 0)
        throw std::runtime_error(path + " refuses CPL_INIT");
    if (Send(CPL_GETCOUNT) != 1)
        throw std::runtime_error(path + " does not hold just one applet");
    NEWCPLINFOA info{};
    Send(CPL_INQUIRE, 0, reinterpret_cast<LPARAM>(&m_info));
    Send(CPL_NEWINQUIRE, 0, reinterpret_cast<LPARAM>(&info));
}

AppletHost::~AppletHost()
{
    if (!m_thread.Clear())
        return;
    m_getCommandLine.reset();
    m_getKeyState.reset();
    try {
        Send(CPL_STOP, 0, m_info.lData);
        Send(CPL_EXIT);
    } catch (const std::exception& failure) {
        ADD_FAILURE() << failure.what();
    }
    m_thread.Start([this] { return LONG{FreeLibrary(m_module)}; }).wait_for(defaultLimit);
}

void AppletHost::Load(const std::string& path)
{
    m_module = LoadLibraryA(path.c_str());
    if (m_module == nullptr)
        throw std::runtime_error(path + ": error " + std::to_string(GetLastError()));
    m_applet = reinterpret_cast<APPLET_PROC>(reinterpret_cast<void*>(GetProcAddress(m_module, "CPlApplet")));
    if (m_applet == nullptr)
        throw std::runtime_error(path + " does not export CPlApplet");
}

void AppletHost::SetCommandLine(const std::string& commandLine)
{
    m_commandLine = commandLine;
    if (!m_getCommandLine)
        m_getCommandLine.emplace(m_module, "GetCommandLineA", &CommandLine);
    if (!m_getCommandLine->IsImported())
        throw std::runtime_error("not imported: GetCommandLineA");
}

LPSTR AppletHost::CommandLine()
{
    return Turn<AppletHost>::Active().m_commandLine.data();
}

LONG AppletHost::Wait(std::future<LONG>& answer)
{
    if (answer.wait_for(defaultLimit) != std::future_status::ready)
        throw std::runtime_error("CPlApplet does not return");
    return answer.get();
}

LONG AppletHost::Send(UINT message, LPARAM first, LPARAM second)
{
    auto answer = m_thread.Start([=, this] { return m_applet(Frame(), message, first, second); });
    return Wait(answer);
}

void AppletHost::DoubleClick()
{
    m_answer = m_thread.Start([this] { return m_applet(Frame(), CPL_DBLCLK, 0, m_info.lData); });
}

void AppletHost::Open()
{
    DoubleClick();
    const auto isOpen = [this] {
        const HWND sheet = FindSheet();
        return HasEnded() || (sheet != nullptr && IsWindowVisible(CurrentPage(sheet)) != FALSE);
    };
    if (!WaitUntil(isOpen))
        throw std::runtime_error("no sheet appears");
    if (HasEnded())
        throw std::runtime_error("CPlApplet returned " + std::to_string(WaitForEnd()) + " without a sheet");
    m_thread.Settle();
}

LONG AppletHost::WaitForEnd()
{
    return Wait(m_answer);
}

bool AppletHost::HasEnded() const
{
    return m_thread.IsIdle();
}

HWND AppletHost::FindSheet() const
{
    const std::vector<HWND> windows = m_thread.Windows();
    const auto found = std::find_if(windows.begin(), windows.end(), TabControlOf);
    return found == windows.end() ? nullptr : *found;
}

DialogDriver AppletHost::Sheet() const
{
    const HWND sheet = FindSheet();
    if (sheet == nullptr)
        throw std::runtime_error("no sheet is open");
    return {m_thread, sheet};
}

HWND AppletHost::TabControl() const
{
    return TabControlOf(Sheet().Window());
}

std::vector<std::string> AppletHost::Tabs() const
{
    const HWND tabs = TabControl();
    std::vector<std::string> texts(static_cast<std::size_t>(SendWithin(tabs, TCM_GETITEMCOUNT)));
    for (std::size_t index = 0; index < texts.size(); ++index)
        texts[index] = TabText(tabs, index);
    return texts;
}

std::string AppletHost::ActiveTab() const
{
    const HWND tabs = TabControl();
    return TabText(tabs, static_cast<WPARAM>(SendWithin(tabs, TCM_GETCURSEL)));
}

bool AppletHost::TurnTo(const std::string& tab) const
{
    const std::vector<std::string> tabs = Tabs();
    const auto found = std::find(tabs.begin(), tabs.end(), tab);
    if (found == tabs.end())
        throw std::runtime_error("no tab \"" + tab + "\"");
    PostMessageA(Sheet().Window(), PSM_SETCURSEL, static_cast<WPARAM>(found - tabs.begin()), 0);
    m_thread.Settle();
    return ActiveTab() == tab;
}

DialogDriver AppletHost::Page(const std::string& tab) const
{
    if (!TurnTo(tab))
        throw std::runtime_error("the page \"" + ActiveTab() + "\" does not let go");
    return ActivePage();
}

DialogDriver AppletHost::ActivePage() const
{
    return {m_thread, CurrentPage(Sheet().Window())};
}

DialogDriver AppletHost::WaitForDialog(const std::string& title) const
{
    HWND dialog = nullptr;
    const auto isThere = [&] {
        const std::vector<HWND> windows = m_thread.Windows();
        const auto found = std::find_if(windows.begin(), windows.end(),
                                        [&](HWND window) { return WindowText(window) == title; });
        dialog = found == windows.end() ? nullptr : *found;
        return dialog != nullptr;
    };
    if (!WaitUntil(isThere))
        throw std::runtime_error("no dialog \"" + title + "\" appears");
    return {m_thread, dialog};
}

LONG AppletHost::PressAndWait(int button)
{
    Sheet().Click(button);
    return WaitForEnd();
}

LONG AppletHost::PressOk()
{
    return PressAndWait(IDOK);
}

LONG AppletHost::PressCancel()
{
    return PressAndWait(IDCANCEL);
}

LONG AppletHost::Close()
{
    PostMessageA(Sheet().Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
    return WaitForEnd();
}

void AppletHost::PressKey(WORD key) const
{
    PostKey(WM_KEYDOWN, WM_KEYUP, key, 0);
}

void AppletHost::PressKeyWithAlt(WORD key) const
{
    constexpr LPARAM altIsDown = 0x20000000;
    PostKey(WM_SYSKEYDOWN, WM_SYSKEYUP, key, altIsDown);
}

void AppletHost::PressKeyWith(std::initializer_list<BYTE> held, WORD key) const
{
    const HeldKeys keys(m_thread.Id(), held);
    PressKey(key);
}

void AppletHost::PostKey(UINT pressed, UINT released, WORD key, LPARAM state) const
{
    const HWND focus = m_thread.Focus();
    if (focus == nullptr)
        throw std::runtime_error("no control has the focus");
    // The key's number among the counts of repeats and states: one press, then its release.
    const LPARAM scanCode = static_cast<LPARAM>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC)) << 16U;
    PostMessageA(focus, pressed, key, scanCode | state | 1);
    PostMessageA(focus, released, key, scanCode | state | 0xC0000001);
    m_thread.Settle();
}

void AppletHost::HoldKeys(std::set<int> keys)
{
    m_heldKeys = std::move(keys);
    if (!m_getKeyState)
        m_getKeyState.emplace(m_module, "GetKeyState", &KeyState);
    if (!m_getKeyState->IsImported())
        throw std::runtime_error("not imported: GetKeyState");
}

SHORT AppletHost::KeyState(int key)
{
    const AppletHost& host = Turn<AppletHost>::Active();
    return host.m_heldKeys.contains(key) ? SHORT{-0x8000}
                                         : host.m_getKeyState->Original<decltype(GetKeyState)>()(key);
}

} // namespace support
