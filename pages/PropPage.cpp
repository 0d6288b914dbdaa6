// The common base of the settings pages.
#include "pages/PropPage.h"

#include "sysaccess/Help.h"

CVtnPropPage::CVtnPropPage(UINT templateId, const char* helpTopic)
    : CPropertyPage(templateId), m_helpTopic(helpTopic)
{
    // The system enables the sheet's Help button for pages that say they have help.
    m_psp.dwFlags |= PSP_HASHELP;
}

void CVtnPropPage::ShowHelp() const
{
    ShowHelpTopic(m_helpTopic);
}

void CVtnPropPage::OnOK()
{
    auto* const sheet = dynamic_cast<SettingsSheet*>(GetParent());
    if (sheet != nullptr)
        sheet->SaveAllPages();
}
