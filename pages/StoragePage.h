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
    [[nodiscard]] bool IsChanged() const override { return m_isChanged; }

  protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;

    DECLARE_MESSAGE_MAP()

  private:
    // Takes over the state of the clicked box.
    void OnBoxClicked(UINT controlId);

    std::array<CButton, storageFeatures.size()> m_boxes;
    StorageSettings m_settings;
    bool m_isChanged = false;
};
