// The Process Monitor page: which processes the host agent watches for their start and stop.
#pragma once

#include "pages/ProcessList.h"
#include "pages/PropPage.h"

class ProcMonPage : public CVtnPropPage
{
  public:
    ProcMonPage();

    // Saves the list as the user sees it; throws ConfigurationError. For a page that was changed, so one that
    // has been shown.
    DWORD Save() override;
    [[nodiscard]] bool IsChanged() const override { return m_isChanged; }

    BOOL OnKillActive() override;

  protected:
    void DoDataExchange(CDataExchange* pDX) override;
    // Loads the list; throws ConfigurationError.
    BOOL OnInitDialog() override;

    afx_msg void OnAdd();
    afx_msg void OnDelete();
    afx_msg void OnOptionChanged(UINT controlId);
    afx_msg void OnEditKillFocus();
    afx_msg void OnAddKillFocus();

    DECLARE_MESSAGE_MAP()

  private:
    void FinishAddWithoutFocus();

    CButton m_addButton;
    CEdit m_edit;
    CButton m_deleteButton;
    ProcessList m_list{m_addButton, m_deleteButton};
    BOOL m_keepActive = FALSE; // the next attempt to leave the page finishes the typing of a name instead
    bool m_isChanged = false;
};
