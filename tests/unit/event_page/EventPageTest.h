// The Event Log page on a window of the test, for its tests.
#pragma once

#include "pages/EventPage.h"
#include "resources/resource.h"
#include "support/TestRegistry.h"

#include <gtest/gtest.h>
#include <memory>

// The page stands on a plain window instead of a sheet; its messages are sent to it directly.
class EventPage : public testing::Test
{
  protected:
    using Names = std::vector<std::string>;

    EventPage()
    {
        m_parameters.Clear();
        m_frame.CreateEx(0, "STATIC", "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 500, 300), nullptr, 0);
    }

    ~EventPage() override
    {
        m_page.reset();
        m_frame.DestroyWindow();
    }

    // A machine with an account and these destinations.
    void Store(const Names& computers, const std::string& user = "events",
               const std::string& password = "secret")
    {
        m_parameters.SetMultiString("Destination", computers);
        m_parameters.SetString("DestinationUsername", user);
        m_parameters.SetBinary("DestinationPassword", ScramblePassword(password));
    }

    void Open()
    {
        m_page.reset(dynamic_cast<CVtnEventPropPage*>(RUNTIME_CLASS(CVtnEventPropPage)->CreateObject()));
        ASSERT_TRUE(m_page->Create(IDD_EVENT, &m_frame));
        m_page->ShowWindow(SW_SHOW);
    }

    [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(m_page->m_hWnd, id); }
    [[nodiscard]] bool IsEnabled(int id) const { return ::IsWindowEnabled(Control(id)) != FALSE; }
    [[nodiscard]] std::string Text(int id) const
    {
        CString text;
        m_page->GetDlgItemText(id, text);
        return static_cast<LPCSTR>(text);
    }
    // Replaces the field's text, which notifies its page.
    void SetText(int id, const char* text) { m_page->SetDlgItemText(id, text); }
    void Type(int id, const std::string& text) const
    {
        for (const char character : text)
            ::SendMessageA(Control(id), WM_CHAR, static_cast<BYTE>(character), 1);
    }
    void Click(int id) const { ::SendMessageA(Control(id), BM_CLICK, 0, 0); }
    void Select(int row) const
    {
        ::SendMessageA(Control(IDC_EVENT_LIST), LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    }
    [[nodiscard]] int Selection() const
    {
        return static_cast<int>(::SendMessageA(Control(IDC_EVENT_LIST), LB_GETCURSEL, 0, 0));
    }

    [[nodiscard]] Names Computers() const
    {
        const HWND list = Control(IDC_EVENT_LIST);
        Names names(static_cast<std::size_t>(::SendMessageA(list, LB_GETCOUNT, 0, 0)));
        for (std::size_t i = 0; i < names.size(); ++i) {
            char text[256] = "";
            ::SendMessageA(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(&text[0]));
            names[i] = &text[0];
        }
        return names;
    }

    // Saves as a sheet does: after the page has let go.
    void Save()
    {
        EXPECT_TRUE(m_page->OnKillActive());
        m_page->Save();
    }

    support::SavedKey m_parameters{"SYSTEM\\CurrentControlSet\\Services\\VtMgHOST\\Parameters"};
    CWnd m_frame;
    std::unique_ptr<CVtnEventPropPage> m_page;
};
