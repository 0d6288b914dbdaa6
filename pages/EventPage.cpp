// The Event Log page's view of the destinations.
#include "pages/EventPage.h"

#include "resources/resource.h"

namespace {

constexpr char userNameChars[] = "`!@#$%^&*()_-{}'";
constexpr char computerNameChars[] = "\\`!@#$%^&*()_-{}'";
constexpr WORD nameStyle = CC_DIGIT | CC_LETTER | CC_LISTED;

constexpr int maxAccountLength = 40;
constexpr int maxComputerLength = 20;

} // namespace

IMPLEMENT_DYNCREATE(CVtnEventPropPage, CPropertyPage)

BEGIN_MESSAGE_MAP(CVtnEventPropPage, CVtnPropPage)
    ON_BN_CLICKED(IDC_EVENT_ADD, &CVtnEventPropPage::OnAdd)
    ON_BN_CLICKED(IDC_EVENT_REMOVE, &CVtnEventPropPage::OnRemove)
    ON_LBN_DBLCLK(IDC_EVENT_LIST, &CVtnEventPropPage::OnRemove)
    ON_EN_CHANGE(IDC_EVENT_NEW_NAME, &CVtnEventPropPage::OnNewNameChanged)
    ON_EN_CHANGE(IDC_EVENT_USER, &CVtnEventPropPage::OnUserChanged)
    ON_EN_CHANGE(IDC_EVENT_PASSWORD, &CVtnEventPropPage::OnPasswordChanged)
END_MESSAGE_MAP()

CVtnEventPropPage::CVtnEventPropPage() : CVtnPropPage(IDD_EVENT, "html\\vtnm641c.htm")
{
    m_settings.Load();
    m_userName = m_settings.userName.c_str();
    m_password = m_settings.password.c_str();
}

DWORD CVtnEventPropPage::Save()
{
    m_settings.userName = static_cast<LPCSTR>(m_userName);
    m_settings.password = static_cast<LPCSTR>(m_password);
    m_settings.Save(m_changes);
    return ERROR_SUCCESS;
}

void CVtnEventPropPage::DoDataExchange(CDataExchange* pDX)
{
    CVtnPropPage::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_EVENT_PASSWORD, m_passwordEdit);
    DDX_Control(pDX, IDC_EVENT_USER, m_userEdit);
    DDX_Control(pDX, IDC_EVENT_NEW_NAME, m_newNameEdit);
    DDX_Control(pDX, IDC_EVENT_NEW_NAME_LABEL, m_newNameLabel);
    DDX_Control(pDX, IDC_EVENT_LIST_LABEL, m_listLabel);
    DDX_Control(pDX, IDC_EVENT_REMOVE, m_removeButton);
    DDX_Control(pDX, IDC_EVENT_ADD, m_addButton);
    DDX_Control(pDX, IDC_EVENT_LIST, m_list);
    ExchangeText(pDX, IDC_EVENT_USER, m_userName, maxAccountLength);
    ExchangeText(pDX, IDC_EVENT_PASSWORD, m_password, maxAccountLength);
    ExchangeText(pDX, IDC_EVENT_NEW_NAME, m_newName, maxComputerLength);
}

void CVtnEventPropPage::ExchangeText(CDataExchange* pDX, int controlId, CString& text, int maxLength)
{
    DDX_Text(pDX, controlId, text);
    DDV_MaxChars(pDX, text, maxLength);
}

BOOL CVtnEventPropPage::OnInitDialog()
{
    CVtnPropPage::OnInitDialog();
    FilterFields();
    for (const std::string& computer : m_settings.computers)
        m_list.AddString(computer.c_str());
    EnableControls();
    m_changes = 0;
    return TRUE;
}

// Data exchange has taken the fields over already, so this only sets what they accept.
void CVtnEventPropPage::FilterFields()
{
    m_userEdit.SubclassFiltered(IDC_EVENT_USER, this, nameStyle, userNameChars);
    m_passwordEdit.SubclassFiltered(IDC_EVENT_PASSWORD, this, CC_ANY, "");
    m_newNameEdit.SubclassFiltered(IDC_EVENT_NEW_NAME, this, nameStyle, computerNameChars);
}

bool CVtnEventPropPage::HasAccount() const
{
    return m_userEdit.GetWindowTextLength() > 0 && m_passwordEdit.GetWindowTextLength() > 0;
}

void CVtnEventPropPage::EnableControls()
{
    const bool hasAccount = HasAccount();
    const std::array<CWnd*, 4> destinations = {&m_newNameLabel, &m_newNameEdit, &m_listLabel, &m_list};
    for (CWnd* const control : destinations)
        control->EnableWindow(hasAccount);
    m_addButton.EnableWindow(hasAccount && m_newNameEdit.GetWindowTextLength() > 0);
    m_removeButton.EnableWindow(hasAccount && m_list.GetCount() > 0);
}

void CVtnEventPropPage::OnNewNameChanged()
{
    m_addButton.EnableWindow(m_newNameEdit.GetWindowTextLength() > 0);
}

void CVtnEventPropPage::OnUserChanged()
{
    EnableControls();
    m_changes |= UserNameChanged;
}

void CVtnEventPropPage::OnPasswordChanged()
{
    EnableControls();
    m_changes |= PasswordChanged;
}

void CVtnEventPropPage::OnAdd()
{
    CString name;
    m_newNameEdit.GetWindowText(name);
    m_list.AddString(name);
    if (m_list.GetCount() == 1)
        m_list.SetCurSel(0);
    m_newNameEdit.SetWindowText("");
    EnableControls();
    m_list.SetFocus();
    KeepComputers();
}

void CVtnEventPropPage::OnRemove()
{
    const int selected = m_list.GetCurSel();
    if (selected == LB_ERR)
        return;
    CString name;
    m_list.GetText(selected, name);
    m_list.DeleteString(static_cast<UINT>(selected));
    m_newNameEdit.SetWindowText(name);
    m_newNameEdit.SetSel(0, -1);
    if (m_list.GetCount() > 0)
        m_list.SetCurSel(0);
    EnableControls();
    m_newNameEdit.SetFocus();
    KeepComputers();
}

// The list box is the list from the first change on.
void CVtnEventPropPage::KeepComputers()
{
    m_settings.computers.clear();
    for (int index = 0; index < m_list.GetCount(); ++index) {
        CString name;
        m_list.GetText(index, name);
        m_settings.computers.emplace_back(static_cast<LPCSTR>(name));
    }
    m_changes |= ComputersChanged;
}
