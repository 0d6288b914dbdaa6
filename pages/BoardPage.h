// The Remote Lumora page: the settings of the remote management board, and its reset.
#pragma once

#include "pages/core/BoardLibrary.h"
#include "pages/PropPage.h"

#include <afxwin.h>
#include <array>

// The board keeps the settings; the page reads them when it is shown, so constructing it asks for nothing.
class CVtnRb4PropPage : public CVtnPropPage
{
  public:
    CVtnRb4PropPage();

    // Writes the settings to the board. Returns the board library's status, 0 on success.
    DWORD Save() override;
    [[nodiscard]] bool IsChanged() const override { return m_changes != 0; }

  protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;

    afx_msg void OnBoxClicked(UINT controlId);
    afx_msg void OnResetBoard();

    DECLARE_MESSAGE_MAP()

  private:
    // Puts what the board holds into the boxes. That of a battery setting which the board does not offer is
    // disabled and keeps its tick.
    void ShowBoard(const BoardData& data);
    // Resets the board while the please-wait dialog is shown; the status of the last call of the board.
    DWORD ResetUnderPleaseWait();

    static constexpr std::size_t boxCount = 3;

    std::array<CButton, boxCount> m_boxes; // in the order of the record's fields
    CButton m_resetButton;
    std::array<int, boxCount> m_enabled{}; // BOOL, as the boxes were at the last data exchange
    DWORD m_changes = 0;                   // a bit for each box that was clicked, the first box's is 1
};
