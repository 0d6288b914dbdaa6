// The Storage page: a check box for each feature of the storage agents that can be switched off.
#pragma once

#include "pages/core/StorageSettings.h"
#include "pages/PropPage.h"

#include <afxwin.h>

class CVtnStoragePropPage : public CVtnPropPage
{
  public:
    // Loads the settings; throws ConfigurationError.
    CVtnStoragePropPage();

    DWORD Save() override;
    [[nodiscard]] bool IsChanged() const override { return m_modified != 0; }

  protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;

    DECLARE_MESSAGE_MAP()

  private:
    // Takes the clicked box's state over.
    void OnBoxClicked(UINT controlId);

    std::array<CButton, storageFeatureCount> m_boxes;
    StorageSettings m_settings;
    DWORD m_modified = 0;
};
