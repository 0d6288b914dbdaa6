// The server role of the SNMP Settings page: typed, pasted, stored by other programs, and its limit.
#include "applet/SnmpPageTest.h"
#include "support/Clipboard.h"

namespace {

using support::DialogDriver;
using support::ExpectString;

TEST_F(SnmpPage, SavesTheServerRole)
{
    Open().Type(IDC_SNMP_SERVER_ROLE, "Mail & print, 2nd floor");
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", "Mail & print, 2nd floor");
}

TEST_F(SnmpPage, SavesTheServerRoleWithoutHavingBeenShown)
{
    m_machine.product.SetString("ServerRole", "Mail");
    m_host.Open();
    m_host.Page("Storage");
    m_machine.product.DeleteValue("ServerRole");
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", "Mail");
}

TEST_F(SnmpPage, TakesNoMoreThan64CharactersOfAServerRole)
{
    const DialogDriver page = Open();
    page.Type(IDC_SNMP_SERVER_ROLE, std::string(65, 'r'));
    EXPECT_EQ(page.Text(IDC_SNMP_SERVER_ROLE), std::string(64, 'r'));
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", std::string(64, 'r'));
}

class StoredRole : public SnmpPage, public testing::WithParamInterface<std::size_t>
{
};

TEST_P(StoredRole, OfAnyLengthStaysUnlessEdited)
{
    const std::string role(GetParam(), 'r');
    m_machine.product.SetString("ServerRole", role);
    const DialogDriver page = Open();
    EXPECT_EQ(page.Text(IDC_SNMP_SERVER_ROLE), role);
    EXPECT_TRUE(m_host.TurnTo("Storage"));
    EXPECT_TRUE(m_host.TurnTo("SNMP Settings"));
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", role);
}

INSTANTIATE_TEST_SUITE_P(Lengths, StoredRole, testing::Values(64, 65, 1000));

TEST_F(SnmpPage, RefusesAnEditedServerRoleStillTooLong)
{
    m_machine.product.SetString("ServerRole", std::string(70, 'r'));
    const DialogDriver page = Open();
    page.SetText(IDC_SNMP_SERVER_ROLE, std::string(65, 'r'));
    m_boxes.Answer(IDOK);
    m_host.Sheet().Click(IDOK);
    EXPECT_FALSE(m_host.HasEnded());
    ASSERT_EQ(m_boxes.Shown().size(), 1);
    EXPECT_EQ(m_boxes.Shown().front().text, "Enter no more than 64 characters.");
    EXPECT_EQ(m_boxes.Shown().front().caption, "Norvale Management Agents");
    page.SetText(IDC_SNMP_SERVER_ROLE, std::string(64, 'r'));
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", std::string(64, 'r'));
}

// --- pasting

class PastedRole : public SnmpPage
{
  protected:
    // Pastes a text where the user has put the caret.
    void Paste(const DialogDriver& page, const std::string& text) const
    {
        support::CopyToClipboard(m_host.Frame(), text);
        support::SendWithin(page.Control(IDC_SNMP_SERVER_ROLE), WM_PASTE);
    }
    static void PutCaretAtTheEnd(const DialogDriver& page)
    {
        page.Focus(IDC_SNMP_SERVER_ROLE);
        support::SendWithin(page.Control(IDC_SNMP_SERVER_ROLE), EM_SETSEL, 1000, 1000);
    }
};

TEST_F(PastedRole, IsTakenWhateverItsCharacters)
{
    Paste(Open(), "Mail & print; 2nd floor");
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", "Mail & print; 2nd floor");
}

TEST_F(PastedRole, IsCutAt64Characters)
{
    const DialogDriver page = Open();
    Paste(page, std::string(65, 'p'));
    EXPECT_EQ(page.Text(IDC_SNMP_SERVER_ROLE), std::string(64, 'p'));
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", std::string(64, 'p'));
}

TEST_F(PastedRole, AddsNothingToOneThatIsTooLongAlready)
{
    const std::string role(70, 'r');
    m_machine.product.SetString("ServerRole", role);
    const DialogDriver page = Open();
    PutCaretAtTheEnd(page);
    Paste(page, "p");
    EXPECT_EQ(page.Text(IDC_SNMP_SERVER_ROLE), role);
    m_host.PressOk();
    ExpectString(m_machine.product, "ServerRole", role);
}

} // namespace
