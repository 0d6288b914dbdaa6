// The process list; see the header.
#include "pages/ProcessList.h"

#include "pages/core/ListedNames.h"
#include "pages/core/TaskList.h"
#include "pages/RedrawPause.h"
#include "resources/resource.h"
#include "sysaccess/core/ConfigurationError.h"
#include "sysaccess/MessageBoxes.h"

#include <algorithm>

namespace {

constexpr int optionColumn = 80; // dialog units from the list's left edge

constexpr UINT itemMargin = 1; // pixels from a line's left edge to its text

CString LowerCase(const char* name)
{
    CString lower(name);
    lower.MakeLower();
    return lower;
}

} // namespace

BEGIN_MESSAGE_MAP(ProcessList, CListBox)
    ON_CONTROL_REFLECT(LBN_SELCHANGE, &ProcessList::OnSelectionChanged)
    ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

CString ProcessList::OptionText(int option) const
{
    return m_optionTexts[static_cast<std::size_t>(option & ProcessOptionMask)];
}

CString ProcessList::LineOf(const CString& name, int option) const
{
    CString line = name;
    line += "\t";
    line += OptionText(option);
    return line;
}

void ProcessList::Load()
{
    const std::vector<MonitoredProcess> configured = LoadMonitoredProcesses();
    for (std::size_t option = 0; option < m_optionTexts.size(); ++option)
        m_optionTexts[option] = LoadText(IDS_PROCMON_OPTION_NONE + static_cast<UINT>(option));
    ResetContent();
    SetTabStops(optionColumn);
    {
        const RedrawPause pause(*this);
        ListedNames listed;
        for (const MonitoredProcess& process : configured)
            LoadItem(listed, process.name, static_cast<signed char>(process.option));
        for (const std::string& name : RunningProcessNames())
            LoadItem(listed, name, ProcessOptionNone);
    }
    m_current = 0;
    UpdateDeleteButton();
}

// AddItem for thousands of names: the list box, whose search looks at every line, is asked only about those
// that several lines begin with.
void ProcessList::LoadItem(ListedNames& listed, const std::string& name, int option)
{
    const CString lower = LowerCase(name.c_str());
    const std::string listedName = static_cast<LPCSTR>(lower);
    const ListedNames::FirstMatch match = listed.Find(listedName);
    if (match == ListedNames::FirstMatch::TheName)
        return;
    const bool isListed =
        match == ListedNames::FirstMatch::AskTheList ? AddItem(lower, option) : AddLine(lower, option);
    // A name that is missing from the list would be missing from what is saved.
    if (!isListed)
        throw configurationRefused;
    listed.Add(listedName);
}

void ProcessList::Save() const
{
    std::vector<MonitoredProcess> processes;
    for (int index = 0; index < GetCount(); ++index)
        processes.push_back({static_cast<BYTE>(GetItemData(index)), static_cast<LPCSTR>(NameOf(index))});
    SaveMonitoredProcesses(processes);
}

bool ProcessList::AddItem(const char* name, int option)
{
    const CString lower = LowerCase(name);
    // The first line that begins with the name decides alone: behind "foo bar" a line "foo" is not seen, and
    // the name is listed twice.
    const int found = FindString(-1, lower);
    if (found == LB_ERR || NameOf(found) != lower)
        return AddLine(lower, option);
    m_current = found;
    return true;
}

bool ProcessList::AddLine(const CString& name, int option)
{
    const int added = AddString(LineOf(name, option));
    if (added < 0)
        return false;
    m_current = added;
    // A new line's number is 0, as most lines' is.
    if (option != 0)
        SetItemData(added, static_cast<DWORD_PTR>(option));
    return true;
}

CString ProcessList::NameOf(int index) const
{
    CString line;
    GetText(index, line);
    return line.Left(line.Find('\t'));
}

int ProcessList::CurrentOption() const
{
    return static_cast<int>(GetItemData(m_current));
}

void ProcessList::BeginAdd(CEdit& edit)
{
    // Without a line of its own the typing would end with another one's deletion.
    if (!AddItem("", ProcessOptionNone))
        return;
    SelectCurrent();
    UpdateDeleteButton();
    EnableOptions(FALSE);
    PlaceOverCurrent(edit);
    m_addButton.SetWindowText(LoadText(IDS_PROCMON_ENTER));
    m_addMode = false;
}

void ProcessList::PlaceOverCurrent(CEdit& edit)
{
    CRect place;
    GetItemRect(m_current, place);
    // As far as the name's column goes.
    place.right = place.right / 5 * 2;
    edit.SetParent(this);
    edit.SetWindowText("");
    edit.SetMargins(itemMargin, 0);
    edit.MoveWindow(place);
    edit.ShowWindow(SW_SHOW);
    edit.BringWindowToTop();
    edit.SetFocus();
}

void ProcessList::FinishAdd(CEdit& edit)
{
    m_addButton.SetWindowText(LoadText(IDS_PROCMON_ADD));
    // Before the edit is hidden, which takes its focus: the loss of focus must not finish once more.
    m_addMode = true;
    CString name;
    edit.GetWindowText(name);
    edit.ShowWindow(SW_HIDE);
    // Back to the page, which looks for its controls among its own children.
    edit.SetParent(GetParent());
    DeleteCurrent();
    name.TrimLeft();
    name.TrimRight();
    if (!name.IsEmpty())
        AddItem(name, ProcessAddedByHand);
    SelectCurrent();
    SetFocus();
    UpdateDeleteButton();
    ShowOption();
}

void ProcessList::DeleteCurrent()
{
    DeleteString(static_cast<UINT>(m_current));
    m_current = std::max(m_current - 1, 0);
    UpdateDeleteButton();
    SelectCurrent();
    SetFocus();
    ShowOption();
}

void ProcessList::ChangeOption()
{
    const int checked = GetParent()->GetCheckedRadioButton(IDC_PROCMON_NONE, IDC_PROCMON_START_STOP);
    if (checked == 0 || m_current < 0 || m_current >= GetCount())
        return;
    const int option = (checked - IDC_PROCMON_NONE) | (CurrentOption() & ProcessAddedByHand);
    // Not sorted in again: the line must not move under the user's eyes. The old line goes when the new one
    // is there.
    if (InsertString(m_current, LineOf(NameOf(m_current), option)) < 0) {
        ShowOption();
        return;
    }
    SetItemData(m_current, static_cast<DWORD_PTR>(option));
    DeleteString(static_cast<UINT>(m_current) + 1);
    SelectCurrent();
}

void ProcessList::OnSelectionChanged()
{
    m_current = GetCurSel();
    UpdateDeleteButton();
    ShowOption();
}

// While a name is being typed, the click's taking of the focus ends that, which moves the lines: the one that
// was clicked is looked for again.
void ProcessList::OnLButtonDown(UINT nFlags, CPoint point)
{
    if (!IsAdding()) {
        CListBox::OnLButtonDown(nFlags, point);
        return;
    }
    BOOL isOutside = FALSE;
    CString clicked;
    GetText(static_cast<int>(ItemFromPoint(point, isOutside)), clicked);
    SetFocus();
    const int line = isOutside ? LB_ERR : FindStringExact(-1, clicked);
    if (line == LB_ERR)
        return;
    SetCurSel(line);
    OnSelectionChanged();
}

void ProcessList::SelectCurrent()
{
    SetCurSel(m_current);
}

// Without a current line all bits are set, so the button is enabled; pressing it then deletes nothing.
void ProcessList::UpdateDeleteButton()
{
    m_deleteButton.EnableWindow((CurrentOption() & ProcessAddedByHand) != 0);
}

// A number that is no option's, as without a current line, leaves all four unchecked.
void ProcessList::ShowOption()
{
    GetParent()->CheckRadioButton(IDC_PROCMON_NONE, IDC_PROCMON_START_STOP,
                                  IDC_PROCMON_NONE + (CurrentOption() & ProcessOptionMask));
    EnableOptions(TRUE);
}

void ProcessList::EnableOptions(BOOL enable)
{
    for (const int id : {IDC_PROCMON_NONE, IDC_PROCMON_START, IDC_PROCMON_STOP, IDC_PROCMON_START_STOP,
                         IDC_PROCMON_OPTION_GROUP})
        GetParent()->GetDlgItem(id)->EnableWindow(enable);
}
