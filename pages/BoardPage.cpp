// The Remote Lumora page's view of the board.
#include "pages/BoardPage.h"

#include "resources/resource.h"
#include "sysaccess/core/AgentNames.h"
#include "sysaccess/core/ServiceQueries.h"
#include "sysaccess/MessageBoxes.h"
#include "sysaccess/PleaseWaitDlg.h"

BEGIN_MESSAGE_MAP(CVtnRb4PropPage, CVtnPropPage)
    ON_CONTROL_RANGE(BN_CLICKED, IDC_BOARD_BATTERY, IDC_BOARD_SERVER_RESET, &CVtnRb4PropPage::OnBoxClicked)
    ON_BN_CLICKED(IDC_BOARD_RESET, &CVtnRb4PropPage::OnResetBoard)
END_MESSAGE_MAP()

CVtnRb4PropPage::CVtnRb4PropPage() : CVtnPropPage(IDD_BOARD, "html\\vtnm6cmd.htm") {}

DWORD CVtnRb4PropPage::Save()
{
    BoardData data{};
    for (std::size_t i = 0; i < boxCount; ++i)
        data.*boardSettings[i] = static_cast<DWORD>(m_enabled[i]);
    return WriteBoardData(data);
}

void CVtnRb4PropPage::DoDataExchange(CDataExchange* pDX)
{
    CVtnPropPage::DoDataExchange(pDX);
    for (std::size_t i = 0; i < boxCount; ++i)
        DDX_Control(pDX, IDC_BOARD_BATTERY + static_cast<int>(i), m_boxes[i]);
    DDX_Control(pDX, IDC_BOARD_RESET, m_resetButton);
    for (std::size_t i = 0; i < boxCount; ++i)
        DDX_Check(pDX, IDC_BOARD_BATTERY + static_cast<int>(i), m_enabled[i]);
}

BOOL CVtnRb4PropPage::OnInitDialog()
{
    CVtnPropPage::OnInitDialog();
    BoardData data{};
    if (ReadBoardData(data) == ERROR_SUCCESS)
        ShowBoard(data);
    UpdateData(TRUE);
    // The server agent talks to the board and must not lose it.
    m_resetButton.EnableWindow(!IsServiceActive(serverServiceName));
    m_changes = 0;
    return TRUE;
}

void CVtnRb4PropPage::ShowBoard(const BoardData& data)
{
    CButton& battery = m_boxes[0];
    battery.EnableWindow(OffersBattery(data));
    for (std::size_t i = 0; i < boxCount; ++i) {
        if (m_boxes[i].IsWindowEnabled())
            m_boxes[i].SetCheck(data.*boardSettings[i] != 0 ? BST_CHECKED : BST_UNCHECKED);
    }
}

void CVtnRb4PropPage::OnBoxClicked(UINT controlId)
{
    m_changes |= 1U << (controlId - IDC_BOARD_BATTERY);
}

void CVtnRb4PropPage::OnResetBoard()
{
    const int answer = MessageBoxById(m_hWnd, IDS_BOARD_RESET_QUESTION, IDS_APPLET_NAME,
                                      MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2);
    if (answer == IDYES && ResetUnderPleaseWait() != ERROR_SUCCESS)
        MessageBoxById(m_hWnd, IDS_BOARD_UNREACHABLE, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
}

DWORD CVtnRb4PropPage::ResetUnderPleaseWait()
{
    PleaseWaitSlot pleaseWait;
    ShowPleaseWait(m_hWnd, LoadText(IDS_BOARD_RESETTING), pleaseWait);
    BoardData data{};
    const DWORD status = ResetBoard(data);
    if (status != ERROR_SUCCESS)
        return status;
    // The boxes alone: what is saved is taken from them when the page is left.
    ShowBoard(data);
    m_changes = 0;
    return status;
}
