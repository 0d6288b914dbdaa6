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

CRect CSheetAssembly::PlaceOf(int controlId) const
{
    CRect place;
    GetDlgItem(controlId)->GetWindowRect(&place);
    ScreenToClient(&place);
    return place;
}

// Settings take effect with the agents' restart after OK, so there is nothing that Apply could do.
void CSheetAssembly::PutHelpInPlaceOfApply()
{
    CloseGapBesideApply();
    const CRect place = PlaceOf(ID_APPLY_NOW);
    GetDlgItem(ID_APPLY_NOW)->EnableWindow(FALSE);
    GetDlgItem(ID_APPLY_NOW)->SetWindowPos(nullptr, place.left, place.top, 0, 0, inPlace | SWP_HIDEWINDOW);
    GetDlgItem(IDHELP)->SetWindowPos(nullptr, place.left, place.top, 0, 0, inPlace | SWP_SHOWWINDOW);
}

// Some systems leave room for a Help button of their own to the right of Apply: the row moves to where it
// would stand without.
void CSheetAssembly::CloseGapBesideApply()
{
    const int gap = PlaceOf(tabControlId).right - PlaceOf(ID_APPLY_NOW).right;
    for (const int button : {IDOK, IDCANCEL, ID_APPLY_NOW}) {
        const CRect place = PlaceOf(button);
        GetDlgItem(button)->SetWindowPos(nullptr, place.left + gap, place.top, 0, 0, inPlace);
    }
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
