// How the sheet is put together from its pages, whichever they are: which tabs the user sees, where Help
// stands and leads, and in which order everything is saved.
#pragma once

#include "applet/PageTable.h"
#include "pages/PropPage.h"

#include <afxdlgs.h>
#include <array>

// The sheet as the rules see it: it knows its pages by their roles alone.
class CSheetAssembly : public CPropertySheet, public SettingsSheet
{
  public:
    // `title` is the caption; `parent` is disabled while the sheet runs.
    CSheetAssembly(const char* title, CWnd* parent);

    // Takes a page, which must live as long as the sheet, in its role. Called before BuildPages.
    void Assign(PageRole role, CVtnPropPage& page);

    // Adds the tabs that this machine and this user need. Called once, before DoModal.
    void BuildPages();

    // Saves the assigned pages in the fixed order, those without a tab too; some only when they were
    // changed. Returns what the board page's save returned, else 0; throws ConfigurationError.
    DWORD SaveAllPages() override;

    // Whether the page in this role, if there is one, was changed; for the restart decision.
    [[nodiscard]] bool IsChanged(PageRole role) const;

    BOOL OnInitDialog() override;

  protected:
    int OnCreate(LPCREATESTRUCT createStruct);
    void PostNcDestroy() override;
    void OnHelp();

    DECLARE_MESSAGE_MAP()

  private:
    [[nodiscard]] CVtnPropPage* Page(PageRole role) const { return m_pages[static_cast<std::size_t>(role)]; }
    // A control's rectangle in the sheet's client coordinates, in pixels.
    [[nodiscard]] CRect PlaceOf(const CWnd& control) const;
    void PutHelpInPlaceOfApply();

    std::array<CVtnPropPage*, pageTable.size()> m_pages{};
};
