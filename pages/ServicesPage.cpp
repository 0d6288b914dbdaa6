// The Services page's view of the agent services' settings.
#include "pages/ServicesPage.h"

#include "pages/RedrawPause.h"
#include "pages/TextMeter.h"
#include "resources/resource.h"
#include "sysaccess/core/ConfigurationError.h"

#include <algorithm>

namespace {

// An item's data has 16 bits for the entry; a larger number would run into that of the group.
constexpr std::size_t mostEntries = 0x10000;

} // namespace

BEGIN_MESSAGE_MAP(CVtnServicesPropPage, CVtnPropPage)
    ON_LBN_DBLCLK(IDC_SERVICES_ACTIVE_LIST, &CVtnServicesPropPage::OnRemove)
    ON_LBN_DBLCLK(IDC_SERVICES_INACTIVE_LIST, &CVtnServicesPropPage::OnAdd)
    ON_BN_CLICKED(IDC_SERVICES_ADD, &CVtnServicesPropPage::OnAdd)
    ON_BN_CLICKED(IDC_SERVICES_REMOVE, &CVtnServicesPropPage::OnRemove)
END_MESSAGE_MAP()

CVtnServicesPropPage::CVtnServicesPropPage() : CVtnPropPage(IDD_SERVICES, "html\\vtnm7ktv.htm")
{
    m_settings.Load();
}

DWORD CVtnServicesPropPage::Save()
{
    // A partner that was switched along may still stand in the other list, so a service can have more active
    // agents than the Active list shows. It gets no more than that, on purpose: what is shown is what is
    // agreed to.
    if (m_isChanged)
        m_settings.Save(static_cast<std::size_t>(m_active.count));
    return ERROR_SUCCESS;
}

void CVtnServicesPropPage::DoDataExchange(CDataExchange* pDX)
{
    CVtnPropPage::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_SERVICES_INACTIVE_LABEL, m_inactive.label);
    DDX_Control(pDX, IDC_SERVICES_ACTIVE_LABEL, m_active.label);
    DDX_Control(pDX, IDC_SERVICES_REMOVE, m_active.moveAway);
    DDX_Control(pDX, IDC_SERVICES_ADD, m_inactive.moveAway);
    DDX_Control(pDX, IDC_SERVICES_INACTIVE_LIST, m_inactive.list);
    DDX_Control(pDX, IDC_SERVICES_ACTIVE_LIST, m_active.list);
}

BOOL CVtnServicesPropPage::OnInitDialog()
{
    CVtnPropPage::OnInitDialog();
    FillLists();
    UpdateControls();
    m_isChanged = false;
    return TRUE;
}

void CVtnServicesPropPage::FillLists()
{
    const RedrawPause activeRedraw(m_active.list);
    const RedrawPause inactiveRedraw(m_inactive.list);
    for (Side* side : {&m_active, &m_inactive}) {
        side->list.ResetContent();
        side->count = 0;
    }
    for (std::size_t i = 0; i < m_settings.groups.size(); ++i) {
        const std::vector<AgentEntry>& entries = m_settings.groups[i].Entries();
        const std::size_t count = std::min(entries.size(), mostEntries);
        for (std::size_t j = 0; j < count; ++j) {
            if (entries[j].listable)
                List(entries[j], static_cast<DWORD>(MAKELONG(j, i)));
        }
    }
    FitScrolling(m_active);
    FitScrolling(m_inactive);
}

void CVtnServicesPropPage::List(const AgentEntry& entry, DWORD_PTR place)
{
    // Active agents that are missing from the list would be missing from what is saved.
    if (!Append(entry.active ? m_active : m_inactive, entry, place))
        throw configurationRefused;
}

bool CVtnServicesPropPage::Append(Side& side, const AgentEntry& entry, DWORD_PTR place)
{
    const int position = side.list.InsertString(side.count, entry.displayName.c_str());
    if (position < 0)
        return false;
    side.list.SetItemData(position, place);
    ++side.count;
    return true;
}

const AgentEntry& CVtnServicesPropPage::EntryAt(DWORD_PTR place) const
{
    return m_settings.groups[HIWORD(place)].Entries()[LOWORD(place)];
}

void CVtnServicesPropPage::FitScrolling(Side& side) const
{
    const TextMeter meter(side.list);
    int longest = 0;
    for (int i = 0; i < side.count; ++i)
        longest = std::max(longest, meter.WidthOf(EntryAt(side.list.GetItemData(i)).displayName));
    // As much room behind the longest text as a list leaves before its texts.
    side.list.SetHorizontalExtent(longest + 2 * GetSystemMetrics(SM_CXEDGE));
}

void CVtnServicesPropPage::OnAdd()
{
    Move(m_inactive, m_active, true);
}

void CVtnServicesPropPage::OnRemove()
{
    Move(m_active, m_inactive, false);
}

void CVtnServicesPropPage::Move(Side& from, Side& to, bool active)
{
    // A double-click on the empty part of a list may come without a selection.
    const int selection = from.list.GetCurSel();
    if (selection == LB_ERR)
        return;
    const DWORD_PTR place = from.list.GetItemData(selection);
    // First the new item: an agent that finds no room there stays where it is.
    if (!Append(to, EntryAt(place), place))
        return;
    from.list.DeleteString(static_cast<UINT>(selection));
    --from.count;
    FitScrolling(from);
    FitScrolling(to);
    // The partner's own item stays where it is, on purpose: the user moves it, if at all.
    m_settings.groups[HIWORD(place)].SetActive(LOWORD(place), active);
    m_isChanged = true;
    UpdateControls();
}

void CVtnServicesPropPage::UpdateControls()
{
    const bool hasInactive = KeepSelection(m_inactive);
    const bool hasActive = KeepSelection(m_active);
    // First whatever is enabled: the focus can only go to a control that is.
    if (hasInactive)
        Enable(m_inactive, TRUE);
    if (hasActive)
        Enable(m_active, TRUE);
    if (!hasInactive)
        LeaveSide(m_inactive, m_active);
    if (!hasActive)
        LeaveSide(m_active, m_inactive);
}

bool CVtnServicesPropPage::KeepSelection(Side& side)
{
    const int selection = std::min(std::max(side.list.GetCurSel(), 0), side.count - 1);
    side.list.SetCurSel(selection);
    return selection >= 0;
}

void CVtnServicesPropPage::Enable(Side& side, BOOL enable)
{
    side.list.EnableWindow(enable);
    side.label.EnableWindow(enable);
    side.moveAway.EnableWindow(enable);
}

void CVtnServicesPropPage::LeaveSide(Side& side, const Side& other)
{
    // By message, so that the dialog also hands on the default button's frame.
    const HWND focus = ::GetFocus();
    if (focus == side.list.m_hWnd)
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(other.list.m_hWnd), TRUE);
    if (focus == side.moveAway.m_hWnd)
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(other.moveAway.m_hWnd), TRUE);
    Enable(side, FALSE);
}
