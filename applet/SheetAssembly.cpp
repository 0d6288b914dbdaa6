// Assembly of the sheet; the order of everything stands in the table of pages.
#include "applet/SheetAssembly.h"

#include "applet/HelpKey.h"

#include <algorithm>

namespace {

// The system's tab control in every sheet.
constexpr int tabControlId = 0x3020;

constexpr UINT inPlace = SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;

} // namespace

BEGIN_MESSAGE_MAP(CSheetAssembly, CPropertySheet)
    ON_WM_CREATE()
    ON_COMMAND(ID_HELP, &CSheetAssembly::OnHelp)
END_MESSAGE_MAP()

CSheetAssembly::CSheetAssembly(const char* title, CWnd* parent) : CPropertySheet(title, parent, 0) {}

void CSheetAssembly::Assign(PageRole role, CVtnPropPage& page)
{
    m_pages[static_cast<std::size_t>(role)] = &page;
}

void CSheetAssembly::BuildPages()
{
    for (const PageRule* rule : pagesByTab) {
        if (Page(rule->role) != nullptr && rule->isOffered())
            AddPage(Page(rule->role));
    }
}

DWORD CSheetAssembly::SaveAllPages()
{
    DWORD result = ERROR_SUCCESS;
    for (const PageRule* rule : pagesBySave) {
        CVtnPropPage* const page = Page(rule->role);
        if (page == nullptr || (rule->save == PageSave::WhenChanged && !page->IsChanged()))
            continue;
        const DWORD saved = page->Save();
        if (rule->role == PageRole::Board)
            result = saved;
    }
    return result;
}

bool CSheetAssembly::IsChanged(PageRole role) const
{
    return Page(role) != nullptr && Page(role)->IsChanged();
}

int CSheetAssembly::OnCreate(LPCREATESTRUCT createStruct)
{
    if (CPropertySheet::OnCreate(createStruct) == -1)
        return -1;
    RecordSheetWindow(m_hWnd);
    return 0;
}

// Not with WM_DESTROY, which a sheet that ends by a refusal does not handle any more.
void CSheetAssembly::PostNcDestroy()
{
    RecordSheetWindow(nullptr);
    CPropertySheet::PostNcDestroy();
}

BOOL CSheetAssembly::OnInitDialog()
{
    const BOOL result = CPropertySheet::OnInitDialog();
    PutHelpInPlaceOfApply();
    return result;
}

CRect CSheetAssembly::PlaceOf(const CWnd& control) const
{
    CRect place;
    control.GetWindowRect(&place);
    ScreenToClient(&place);
    return place;
}

// Settings take effect with the agents' restart after OK, so there is nothing that Apply could do. Some
// systems leave room for a Help button of their own to the right of Apply: the row then moves to where it
// would stand without. Each control is looked for once, as that is a way to the window server and back.
void CSheetAssembly::PutHelpInPlaceOfApply()
{
    CWnd& apply = *GetDlgItem(ID_APPLY_NOW);
    const CRect place = PlaceOf(apply);
    const int gap = PlaceOf(*GetDlgItem(tabControlId)).right - place.right;
    for (const int button : {IDOK, IDCANCEL}) {
        CWnd& control = *GetDlgItem(button);
        const CRect before = PlaceOf(control);
        control.SetWindowPos(nullptr, before.left + gap, before.top, 0, 0, inPlace);
    }
    apply.EnableWindow(FALSE);
    apply.SetWindowPos(nullptr, place.left + gap, place.top, 0, 0, inPlace | SWP_HIDEWINDOW);
    GetDlgItem(IDHELP)->SetWindowPos(nullptr, place.left + gap, place.top, 0, 0, inPlace | SWP_SHOWWINDOW);
}

void CSheetAssembly::OnHelp()
{
    CPropertyPage* const active = GetActivePage();
    if (active == nullptr || !active->OnKillActive())
        return;
    const auto page = std::find(m_pages.begin(), m_pages.end(), active);
    if (page != m_pages.end())
        (*page)->ShowHelp();
}
