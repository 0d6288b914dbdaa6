// What all pages of the sheet have in common, and the sheet as its pages see it.
#pragma once

#include <afxdlgs.h>

// The sheet, for its pages: they save through it and know nothing else of it.
class SettingsSheet
{
  public:
    // Saves every page that the sheet has, shown or not, in the sheet's order. Returns the Win32 code of the
    // save that reports one, 0 on success; throws ConfigurationError.
    virtual DWORD SaveAllPages() = 0;

  protected:
    ~SettingsSheet() = default;
};

// Base of every settings page. A page loads its settings in its constructor and saves them when its sheet
// asks.
class CVtnPropPage : public CPropertyPage
{
  public:
    // `templateId` is the page's dialog; `helpTopic` the path of its topic inside the help file, kept by
    // address.
    CVtnPropPage(UINT templateId, const char* helpTopic);

    // Writes the settings back. Runs once for each page that the user has visited, so it gives the same
    // result when repeated. Returns a Win32 code that nobody reports; throws ConfigurationError.
    virtual DWORD Save() = 0;

    // Whether the user changed something, as the page keeps record of it.
    [[nodiscard]] virtual bool IsChanged() const = 0;

    // Shows the page's help topic.
    void ShowHelp() const;

  protected:
    // OK saves the whole sheet: a page that was never shown has no OnOK of its own.
    void OnOK() override;

  private:
    const char* m_helpTopic;
};
