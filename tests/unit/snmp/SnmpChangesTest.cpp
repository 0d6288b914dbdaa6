// Which edits the SNMP Settings page notes for each control.
#include "machine/SnmpMachine.h"
#include "pages/SnmpPage.h"
#include "resources/resource.h"

#include <gtest/gtest.h>
#include <optional>
#include <ostream>

namespace {

// The page stands on a plain window instead of a sheet; its messages are sent to it directly.
class SnmpChanges : public testing::Test
{
  protected:
    SnmpChanges()
    {
        m_machine.server.Subkey("VTNRACK").Create();
        m_frame.CreateEx(0, "STATIC", "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 500, 300), nullptr, 0);
    }
    ~SnmpChanges() override
    {
        m_page.reset();
        m_frame.DestroyWindow();
    }

    // Opens the page over this stored "SetsEnabled".
    void Open(DWORD sets)
    {
        m_machine.hostSnmp.SetDword("SetsEnabled", sets);
        m_page.emplace();
        ASSERT_TRUE(m_page->Create(IDD_SNMP, &m_frame));
        m_page->ShowWindow(SW_SHOW);
    }

    [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(m_page->m_hWnd, id); }
    void Click(int id) const { ::SendMessageA(Control(id), BM_CLICK, 0, 0); }

    SnmpMachine m_machine;
    CWnd m_frame;
    std::optional<CVtnSnmpPropPage> m_page;
};

TEST_F(SnmpChanges, AreNoneBeforeThePageIsShown)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", 2);
    EXPECT_EQ(CVtnSnmpPropPage().Changes(), 0);
}

TEST_F(SnmpChanges, AreNoneWhenThePageIsShown)
{
    for (DWORD sets = 0; sets < 8; ++sets) {
        Open(sets);
        EXPECT_EQ(m_page->Changes(), 0) << sets;
        EXPECT_FALSE(m_page->IsChanged()) << sets;
        m_page.reset();
    }
}

struct UsedBox
{
    int box;
    DWORD sets; // stored before
    DWORD changes;
};

void PrintTo(const UsedBox& used, std::ostream* out)
{
    *out << "box " << used.box << ", sets " << used.sets;
}

const UsedBox usedBoxes[] = {
    {IDC_SNMP_SETS, 0, 0x02},
    {IDC_SNMP_SETS, 1, 0x02},
    {IDC_SNMP_SETS, 2, 0x02},
    {IDC_SNMP_SETS, 3, 0x06}, // takes remote reboot along
    {IDC_SNMP_REMOTE_REBOOT, 1, 0x04},
    {IDC_SNMP_REMOTE_REBOOT, 3, 0x04},
    {IDC_SNMP_EXCEPTION_TRAP, 0, 0x08},
    {IDC_SNMP_DISABLE_TELNET, 0, 0x10},
    {IDC_SNMP_DISABLE_RACK_TRAPS, 0, 0x20},
};

class EachBox : public SnmpChanges, public testing::WithParamInterface<UsedBox>
{
};

TEST_P(EachBox, NotesItsOwnEdit)
{
    Open(GetParam().sets);
    Click(GetParam().box);
    EXPECT_EQ(m_page->Changes(), GetParam().changes);
    EXPECT_TRUE(m_page->IsChanged());
}

INSTANTIATE_TEST_SUITE_P(Boxes, EachBox, testing::ValuesIn(usedBoxes));

TEST_F(SnmpChanges, NoteAnotherInterval)
{
    Open(0);
    ::SendMessageA(Control(IDC_SNMP_INTERVAL), WM_KEYDOWN, VK_DOWN, 1);
    EXPECT_EQ(m_page->Changes(), 0x01);
}

TEST_F(SnmpChanges, DoNotNoteTheServerRole)
{
    Open(0);
    ::SendMessageA(Control(IDC_SNMP_SERVER_ROLE), WM_CHAR, 'M', 1);
    EXPECT_GT(::GetWindowTextLengthA(Control(IDC_SNMP_SERVER_ROLE)), 0);
    EXPECT_EQ(m_page->Changes(), 0);
}

TEST_F(SnmpChanges, AddUpAndStayAfterASave)
{
    Open(0);
    for (const int box : {IDC_SNMP_EXCEPTION_TRAP, IDC_SNMP_DISABLE_TELNET, IDC_SNMP_DISABLE_TELNET})
        Click(box);
    EXPECT_EQ(m_page->Changes(), 0x18);
    m_page->Save();
    EXPECT_EQ(m_page->Changes(), 0x18);
}

} // namespace
