// The Process Monitor page's controls and commands.
#include "pages/ProcMonPage.h"

#include "resources/resource.h"

#include <utility>

BEGIN_MESSAGE_MAP(ProcMonPage, CVtnPropPage)
    ON_BN_CLICKED(IDC_PROCMON_ADD, &ProcMonPage::OnAdd)
    // A button with BS_NOTIFY reports the second of two quick clicks as a double-click.
    ON_BN_DOUBLECLICKED(IDC_PROCMON_ADD, &ProcMonPage::OnAdd)
    ON_BN_CLICKED(IDC_PROCMON_DELETE, &ProcMonPage::OnDelete)
    ON_CONTROL_RANGE(BN_CLICKED, IDC_PROCMON_NONE, IDC_PROCMON_START_STOP, &ProcMonPage::OnOptionChanged)
    ON_EN_KILLFOCUS(IDC_PROCMON_NEW_NAME, &ProcMonPage::OnEditKillFocus)
    ON_CONTROL(BN_KILLFOCUS, IDC_PROCMON_ADD, &ProcMonPage::OnAddKillFocus)
END_MESSAGE_MAP()

ProcMonPage::ProcMonPage() : CVtnPropPage(IDD_PROCMON, "html\\vtnm5po2.htm") {}

DWORD ProcMonPage::Save()
{
    m_list.Save();
    return ERROR_SUCCESS;
}

void ProcMonPage::DoDataExchange(CDataExchange* pDX)
{
    CVtnPropPage::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_PROCMON_ADD, m_addButton);
    DDX_Control(pDX, IDC_PROCMON_NEW_NAME, m_edit);
    DDX_Control(pDX, IDC_PROCMON_DELETE, m_deleteButton);
    DDX_Control(pDX, IDC_PROCMON_LIST, m_list);
}

BOOL ProcMonPage::OnInitDialog()
{
    CVtnPropPage::OnInitDialog();
    // For the notification of its loss of the focus.
    m_addButton.ModifyStyle(0, BS_NOTIFY);
    m_list.Load();
    m_keepActive = FALSE;
    return TRUE;
}

BOOL ProcMonPage::OnKillActive()
{
    if (!std::exchange(m_keepActive, FALSE))
        return CVtnPropPage::OnKillActive();
    SetFocus();
    return FALSE;
}

void ProcMonPage::OnAdd()
{
    if (m_list.IsAdding())
        m_list.FinishAdd(m_edit);
    else
        m_list.BeginAdd(m_edit);
    m_isChanged = true;
    m_keepActive = TRUE;
}

void ProcMonPage::OnDelete()
{
    m_list.DeleteCurrent();
    m_isChanged = true;
}

void ProcMonPage::OnOptionChanged(UINT /*controlId*/)
{
    m_list.ChangeOption();
    m_isChanged = true;
}

void ProcMonPage::OnEditKillFocus()
{
    // A press of Enter takes the focus first: finishing now would turn it into a press of Add.
    if (GetFocus() != &m_addButton)
        FinishAddWithoutFocus();
}

void ProcMonPage::OnAddKillFocus()
{
    // Enter had the focus and was not pressed. Back in the edit, the typing goes on.
    if (GetFocus() != &m_edit)
        FinishAddWithoutFocus();
}

void ProcMonPage::FinishAddWithoutFocus()
{
    if (!m_list.IsAdding())
        return;
    m_list.FinishAdd(m_edit);
    m_isChanged = true;
    m_keepActive = FALSE;
}
