// Characters beyond ASCII, typed: queued as keys leave them and fetched by the sheet's own loop. The texts
// are those of the system's code page; CTest runs these tests on a Western system and on a Japanese one.
#include "applet/AppletTest.h"
#include "resources/resource.h"
#include "support/ShareScript.h"
#include "support/TaskListScript.h"

#include <cstdlib>

namespace {

using support::DialogDriver;

constexpr UINT japaneseCodePage = 932;

bool IsJapanese()
{
    return GetACP() == japaneseCodePage;
}

// Each of them needs more than its low byte: in a Western code page the codes from 0x80 to 0x9F, in the
// Japanese one two bytes, the second of which may be that of a letter or a backslash.
const wchar_t* TheText()
{
    return IsJapanese() ? L"\u65E5\u672C\u30A2\u30BD\u8868\uFF71x" : L"\u20AC\u201C\u0161\u201D\u017E\u2122x";
}

// The same as it is stored.
std::string TheBytes()
{
    return IsJapanese() ? "\x93\xFA\x96\x7B\x83\x41\x83\x5C\x95\x5C\xB1x" : "\x80\x93\x9A\x94\x9E\x99x";
}

class TypedText : public AppletTest
{
  protected:
    TypedText()
    {
        m_machine.productOptions.SetString("ProductType", "Lanmannt");
        m_host.SetCommandLine("control.exe vtnmgmt.cpl /CLIENT");
    }

    // Tabs have other names in each language.
    DialogDriver OpenPage(std::size_t index)
    {
        m_host.Open();
        return m_host.Page(m_host.Tabs().at(index));
    }

    support::LibraryScript m_libraries{m_host.Module()};
    support::TaskListScript m_tasks{m_libraries};
    support::ShareScript m_shares{m_host.Module()};
};

TEST_F(TypedText, HasTheCodePageThatTheTestIsRunFor)
{
    const char* const wanted = std::getenv("VTN_TEST_CODE_PAGE");
    EXPECT_EQ(std::to_string(GetACP()), wanted == nullptr ? "1252" : wanted);
}

TEST_F(TypedText, IsTheServerRole)
{
    const DialogDriver page = OpenPage(1);
    page.Type(IDC_SNMP_SERVER_ROLE, TheText());
    EXPECT_EQ(page.Text(IDC_SNMP_SERVER_ROLE), TheBytes());
    m_host.PressOk();
    support::ExpectString(m_machine.product, "ServerRole", TheBytes());
}

TEST_F(TypedText, IsTheNameOfAProcess)
{
    const DialogDriver page = OpenPage(4);
    page.Click(IDC_PROCMON_ADD);
    const HWND edit = GetDlgItem(page.Control(IDC_PROCMON_LIST), IDC_PROCMON_NEW_NAME);
    DialogDriver::Type(m_host.Thread(), edit, TheText());
    page.Focus(IDC_PROCMON_LIST); // which ends the typing
    m_host.PressOk();
    const std::string stored = "\x80" + TheBytes() + '\0';
    support::ExpectBinary(m_machine.hostParameters, "ProcMon", support::Bytes(stored.begin(), stored.end()));
}

// Also the second byte of a character whose first one is refused: it may be that of a letter or a backslash.
TEST_F(TypedText, IsRefusedInAPathOfPlainCharacters)
{
    const DialogDriver page = OpenPage(3);
    page.SetText(IDC_DESKTOP_SCRIPT, "");
    page.Type(IDC_DESKTOP_SCRIPT, TheText());
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), "x");
    m_host.PressCancel();
}

} // namespace
