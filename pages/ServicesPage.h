// The Services page: the active sub-agents of all agent services in one list, the inactive ones in another.
#pragma once

#include "pages/core/ServicesSettings.h"
#include "pages/PropPage.h"

#include <afxwin.h>

class CVtnServicesPropPage : public CVtnPropPage
{
  public:
    // Loads the settings. A service that cannot be read is not shown.
    CVtnServicesPropPage();

    // Does nothing unless an agent was moved, even if it was moved back.
    DWORD Save() override;
    [[nodiscard]] bool IsChanged() const override { return m_isChanged; }

  protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;

    void OnAdd();
    void OnRemove();

    DECLARE_MESSAGE_MAP()

  private:
    // One list with what belongs to it.
    struct Side
    {
        CStatic label;
        CListBox list;
        CButton moveAway; // takes the selected agent to the other side
        int count = 0;    // of the list's items
    };

    void FillLists();
    // Adds an agent at the end of the side where it belongs, or refuses; `place` says where its entry is.
    void List(const AgentEntry& entry, DWORD_PTR place);
    // Adds an agent at the end of a side; false when the list has no room for it.
    static bool Append(Side& side, const AgentEntry& entry, DWORD_PTR place);
    [[nodiscard]] const AgentEntry& EntryAt(DWORD_PTR place) const;
    // Lets a list scroll sideways as far as its longest name reaches, and no farther.
    void FitScrolling(Side& side) const;
    // Moves the selected agent, if there is one.
    void Move(Side& from, Side& to, bool active);
    void UpdateControls();
    // Selects something in the list if it can; false when the list is empty.
    static bool KeepSelection(Side& side);
    static void Enable(Side& side, BOOL enable);
    // Disables a side; if the focus is there, it moves to the same control of the other one.
    void LeaveSide(Side& side, const Side& other);

    Side m_active;
    Side m_inactive;
    ServicesSettings m_settings;
    bool m_isChanged = false; // an agent was moved
};
