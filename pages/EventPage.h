// The Event Log page: to which computers the host agent sends its events, and the account that it uses there.
#pragma once

#include "pages/core/EventDestinations.h"
#include "pages/PropPage.h"
#include "sysaccess/ParsedEdit.h"

// Made through its run-time class alone. The applet's sheet has no such page and nothing saves it; who shows
// it saves what IsChanged reports.
class CVtnEventPropPage : public CVtnPropPage
{
    DECLARE_DYNCREATE(CVtnEventPropPage)

  public:
    // Writes the parts that were changed; throws ConfigurationError.
    DWORD Save() override;
    [[nodiscard]] bool IsChanged() const override { return m_changes != 0; }

  protected:
    // Loads the settings; throws ConfigurationError.
    CVtnEventPropPage();

    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;

    afx_msg void OnAdd();
    afx_msg void OnRemove();
    afx_msg void OnNewNameChanged();
    afx_msg void OnUserChanged();
    afx_msg void OnPasswordChanged();

    DECLARE_MESSAGE_MAP()

  private:
    void ExchangeText(CDataExchange* pDX, int controlId, CString& text, int maxLength);
    void FilterFields();
    // Without an account there is nowhere to send anything to.
    void EnableControls();
    [[nodiscard]] bool HasAccount() const;
    void KeepComputers();

    CParsedEdit m_passwordEdit;
    CParsedEdit m_userEdit;
    CParsedEdit m_newNameEdit;
    CStatic m_newNameLabel;
    CStatic m_listLabel;
    CButton m_removeButton;
    CButton m_addButton;
    CListBox m_list;
    CString m_newName;
    CString m_userName;
    CString m_password;
    EventDestinations m_settings;
    DWORD m_changes = 0; // of EventChange
};
