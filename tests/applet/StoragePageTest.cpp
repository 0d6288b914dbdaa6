// The Storage page through its window.
#include "applet/AppletTest.h"
#include "pages/core/StorageSettings.h"
#include "resources/resource.h"

#include <vector>

namespace {

using support::DialogDriver;
using support::ExpectDword;

using Ids = std::vector<int>;

// The check boxes in the order of the page.
Ids Boxes()
{
    Ids boxes;
    for (const StorageFeature& feature : storageFeatures)
        boxes.push_back(static_cast<int>(feature.controlId));
    return boxes;
}

class StoragePage : public AppletTest
{
  protected:
    DialogDriver Open()
    {
        m_host.Open();
        return m_host.Page("Storage");
    }

    static Ids Checked(const DialogDriver& page)
    {
        Ids checked = Boxes();
        std::erase_if(checked, [&](int id) { return !page.IsChecked(id); });
        return checked;
    }
};

TEST_F(StoragePage, ShowsEachAgentsFlags)
{
    m_machine.arrayAgent.SetDword("DisableFlags", 0x3);
    m_machine.sasAgent.SetDword("DisableFlags", 0x1);
    EXPECT_EQ(Checked(Open()), (Ids{IDC_STORAGE_ARRAY_TAPE, IDC_STORAGE_ARRAY_PERFORMANCE}));
    m_host.PressCancel();
}

TEST_F(StoragePage, SavesWhatWasTicked)
{
    const DialogDriver page = Open();
    for (const int id : Boxes())
        page.Check(id);
    m_host.PressOk();
    ExpectDword(m_machine.fibreAgent, "DisableFlags", 0x1);
    ExpectDword(m_machine.arrayAgent, "DisableFlags", 0x3);
    ExpectDword(m_machine.sasAgent, "DisableFlags", 0x4);
}

TEST_F(StoragePage, ClearingOneArrayBoxSavesTheOther)
{
    m_machine.arrayAgent.SetDword("DisableFlags", 0x3);
    Open().Uncheck(IDC_STORAGE_ARRAY_TAPE);
    m_host.PressOk();
    ExpectDword(m_machine.arrayAgent, "DisableFlags", 0x2);
}

TEST_F(StoragePage, AnUntouchedPageSavesItsLoadedValues)
{
    m_machine.sasAgent.SetDword("DisableFlags", 0xFFFFFFFF);
    m_machine.fibreAgent.SetDword("DisableFlags", 0x10);
    m_machine.arrayAgent.DeleteValue("DisableFlags");
    m_host.Open();
    m_host.PressOk();
    ExpectDword(m_machine.sasAgent, "DisableFlags", 0xFFFFFFFF);
    ExpectDword(m_machine.arrayAgent, "DisableFlags", 0x10);
}

// From the sheet's opening to its end without the mouse: Ctrl+Tab to the page, Tab to its first box, Tab and
// the space bar along the boxes, Enter.
TEST_F(StoragePage, IsUsableFromTheKeyboardAlone)
{
    m_machine.sasAgent.SetDword("DisableFlags", 0x4);
    m_host.Open();
    m_host.PressKeyWith({VK_CONTROL}, VK_TAB);
    m_host.PressKeyWith({VK_CONTROL}, VK_TAB);
    ASSERT_EQ(m_host.ActiveTab(), "Storage");
    ASSERT_TRUE(TabTo(m_host.ActivePage().Control(Boxes().front())));
    for (const int id : Boxes()) {
        EXPECT_EQ(GetDlgCtrlID(m_host.Thread().Focus()), id);
        m_host.PressKey(VK_SPACE);
        m_host.PressKey(VK_TAB);
    }
    EXPECT_EQ(GetDlgCtrlID(m_host.Thread().Focus()), IDOK);
    m_host.PressKey(VK_RETURN);
    m_host.WaitForEnd();
    ExpectDword(m_machine.fibreAgent, "DisableFlags", 0x1);
    ExpectDword(m_machine.arrayAgent, "DisableFlags", 0x3);
    ExpectDword(m_machine.sasAgent, "DisableFlags", 0);
}

} // namespace
