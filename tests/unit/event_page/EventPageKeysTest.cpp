// The Event Log page by keys alone.
#include "EventPageTest.h"

#include "support/Expect.h"

namespace {

class EventPageKeys : public EventPage
{
  protected:
    // The page, with the focus where the Tab key finds it first.
    void OpenByKeys()
    {
        Open();
        ::SetFocus(::GetNextDlgTabItem(m_page->m_hWnd, nullptr, FALSE));
    }

    void PressKey(WORD key) const { Press(WM_KEYDOWN, WM_KEYUP, key, 0); }
    void PressKeyWithAlt(WORD key) const { Press(WM_SYSKEYDOWN, WM_SYSKEYUP, key, 0x20000000); }

    // In the control that has the focus.
    void TypeKeys(const std::string& text) const
    {
        for (const char character : text)
            ::PostMessageA(::GetFocus(), WM_CHAR, static_cast<BYTE>(character), 1);
        HandleMessages();
    }

    void ExpectFocus(int id, support::Location where = support::Location::current()) const
    {
        support::ExpectEqual(Control(id), ::GetFocus(), "focus", where);
    }

  private:
    void Press(UINT pressed, UINT released, WORD key, LPARAM state) const
    {
        // The key's number among the counts of repeats and states: one press, then its release.
        const LPARAM scanCode = static_cast<LPARAM>(::MapVirtualKeyA(key, MAPVK_VK_TO_VSC)) << 16U;
        ::PostMessageA(::GetFocus(), pressed, key, scanCode | state | 1);
        ::PostMessageA(::GetFocus(), released, key, scanCode | state | 0xC0000001);
        HandleMessages();
    }

    // As the loop of a sheet does.
    void HandleMessages() const
    {
        MSG message{};
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            if (::IsDialogMessageA(m_page->m_hWnd, &message) != FALSE)
                continue;
            ::TranslateMessage(&message);
            ::DispatchMessageA(&message);
        }
    }
};

TEST_F(EventPageKeys, NameTheAccountAddComputersRemoveOneAndSave)
{
    OpenByKeys();
    ExpectFocus(IDC_EVENT_USER);
    TypeKeys("events");
    PressKey(VK_TAB);
    ExpectFocus(IDC_EVENT_PASSWORD);
    TypeKeys("secret");
    PressKey(VK_TAB);
    ExpectFocus(IDC_EVENT_NEW_NAME);
    TypeKeys("srv-1");
    PressKeyWithAlt('A');
    ExpectFocus(IDC_EVENT_LIST);
    PressKeyWithAlt('N');
    ExpectFocus(IDC_EVENT_NEW_NAME);
    TypeKeys("srv-2");
    PressKeyWithAlt('A');
    EXPECT_EQ(Computers(), (Names{"SRV-1", "SRV-2"}));
    EXPECT_EQ(Selection(), 0);
    PressKey(VK_DOWN);
    EXPECT_EQ(Selection(), 1);
    PressKeyWithAlt('R');
    ExpectFocus(IDC_EVENT_NEW_NAME);
    EXPECT_EQ(Text(IDC_EVENT_NEW_NAME), "SRV-2");
    Save();
    support::ExpectString(m_parameters, "DestinationUsername", "events");
    support::ExpectBinary(m_parameters, "DestinationPassword", ScramblePassword("secret"));
    support::ExpectMultiString(m_parameters, "Destination", {"SRV-1"});
}

} // namespace
