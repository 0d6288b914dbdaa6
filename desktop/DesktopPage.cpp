// The Desktop Mgmt page's view of desktop management.
#include "desktop/DesktopPage.h"

#include "desktop/core/LoginScript.h"
#include "resources/resource.h"
#include "sysaccess/core/CommandLine.h"
#include "sysaccess/MessageBoxes.h"

namespace {

// What a path may be typed with besides letters and digits.
constexpr char pathCharacters[] = "`!@#$%()_-{}~' :\\/.";

// No control of the page, on purpose: data exchange has given the edit its object, which is not to be taken
// over once more. What it accepts is set all the same.
constexpr UINT noControl = 1031;

} // namespace

IMPLEMENT_DYNAMIC(CVtnClientPropPage, CPropertyPage)

BEGIN_MESSAGE_MAP(CVtnClientPropPage, CVtnPropPage)
    ON_BN_CLICKED(IDC_DESKTOP_ENABLE, &CVtnClientPropPage::OnEnable)
    ON_BN_CLICKED(IDC_DESKTOP_BROWSE, &CVtnClientPropPage::OnBrowse)
    ON_EN_UPDATE(IDC_DESKTOP_SCRIPT, &CVtnClientPropPage::OnScriptUpdate)
END_MESSAGE_MAP()

CVtnClientPropPage::CVtnClientPropPage()
    : CVtnPropPage(IDD_DESKTOP, "html\\vtnm2zvy.htm"), m_isClientStart(CommandLineContains(clientSwitch))
{
    m_settings.Load();
}

DWORD CVtnClientPropPage::Save()
{
    m_settings.Save(m_changes);
    return ERROR_SUCCESS;
}

void CVtnClientPropPage::DoDataExchange(CDataExchange* pDX)
{
    CVtnPropPage::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_DESKTOP_ENABLE, m_enableBox);
    DDX_Control(pDX, IDC_DESKTOP_BROWSE, m_browseButton);
    DDX_Control(pDX, IDC_DESKTOP_SCRIPT_LABEL, m_scriptLabel);
    DDX_Control(pDX, IDC_DESKTOP_SCRIPT, m_scriptEdit);
    CString path = m_settings.scriptPath.c_str();
    DDX_Text(pDX, IDC_DESKTOP_SCRIPT, path);
    m_settings.scriptPath = path;
    // Not a limit of the field: a path that is too long is reported when the page is left.
    if (pDX->m_bSaveAndValidate && m_enableBox.GetCheck() == BST_CHECKED)
        DDV_MaxChars(pDX, path, scriptPathLimit);
}

BOOL CVtnClientPropPage::OnInitDialog()
{
    CVtnPropPage::OnInitDialog();
    m_scriptEdit.SubclassFiltered(noControl, this, CC_DIGIT | CC_LETTER | CC_LISTED, pathCharacters);
    SelectScript();
    const bool wasOn = DesktopManagement::IsRecorded();
    m_settings.isOn = wasOn || m_isClientStart;
    // Switched on here, but not as by the user: the script and its record are left alone until they are
    // touched.
    m_changes = 0;
    if (m_settings.isOn != wasOn)
        m_changes = SwitchChanged;
    m_enableBox.SetCheck(m_settings.isOn ? BST_CHECKED : BST_UNCHECKED);
    UpdateControls();
    return TRUE;
}

BOOL CVtnClientPropPage::OnKillActive()
{
    if (!CVtnPropPage::OnKillActive())
        return FALSE;
    if (m_enableBox.GetCheck() != BST_CHECKED || IsUsableLoginScript(m_settings.scriptPath))
        return TRUE;
    MessageBoxById(m_hWnd, IDS_SCRIPT_NAME_INVALID, IDS_APPLET_NAME, MB_ICONEXCLAMATION);
    SelectScript();
    m_scriptEdit.SetFocus();
    return FALSE;
}

void CVtnClientPropPage::OnEnable()
{
    m_settings.isOn = !m_settings.isOn;
    m_changes ^= SwitchChanged;
    if (m_settings.isOn)
        MessageBoxById(m_hWnd, IDS_CLIENT_ENABLED_NOTE, IDS_APPLET_NAME, MB_ICONINFORMATION);
    m_changes |= ScriptChanged;
    UpdateControls();
}

void CVtnClientPropPage::OnBrowse()
{
    CString path;
    m_scriptEdit.GetWindowText(path);
    // It saves rather than opens: a script that is not there yet will be made. The script's directory, where
    // others may write, must not become the one in which this process looks for libraries.
    CFileDialog dialog(FALSE, nullptr, path, OFN_HIDEREADONLY | OFN_NOCHANGEDIR,
                       LoadText(IDS_SCRIPT_FILE_FILTER), this);
    if (dialog.DoModal() != IDOK)
        return;
    m_settings.scriptPath = dialog.GetPathName();
    UpdateData(FALSE);
    UpdateData(TRUE); // reports a path that is too long at once
    SelectScript();
    m_changes |= ScriptChanged;
}

void CVtnClientPropPage::OnScriptUpdate()
{
    m_changes |= ScriptChanged;
}

void CVtnClientPropPage::SelectScript()
{
    m_scriptEdit.SetSel(0, -1);
}

void CVtnClientPropPage::UpdateControls()
{
    m_scriptEdit.EnableWindow(m_settings.isOn);
    m_browseButton.EnableWindow(m_settings.isOn);
}
