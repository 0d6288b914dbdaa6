// The list of the Process Monitor page: process names with what is watched of them, and everything that is
// done to the list.
#pragma once

#include "pages/core/ProcessMonitorSettings.h"

#include <afxwin.h>
#include <array>

class ListedNames;

// A line is a name in lower case, a tab and the option's text; the option byte is the line's number. The line
// that everything is about, the current one, is the selected one once the user has selected any.
class ProcessList : public CListBox
{
  public:
    // Keeps the page's buttons up to date, which must live as long as the list.
    ProcessList(CButton& addButton, CButton& deleteButton)
        : m_addButton(addButton), m_deleteButton(deleteButton)
    {
    }

    // Fills the list: the stored configuration, then what runs. Throws ConfigurationError, also when the list
    // box has no room for all of it.
    void Load();
    // Stores the lines that have an option or are marked. Throws ConfigurationError.
    void Save() const;

    // Makes the line with this name, in lower case, the current one; adds it when a search for the name does
    // not come upon it first. False, and nothing has changed, when the list box has no room for it.
    bool AddItem(const char* name, int option);

    // Adds an empty line and opens `edit` over it; the Add button then reads "Enter". Does nothing when the
    // list box has no room for the line.
    void BeginAdd(CEdit& edit);
    // Puts a line for what was typed, if anything, in place of the empty one, and hides `edit`.
    void FinishAdd(CEdit& edit);
    [[nodiscard]] bool IsAdding() const { return !m_addMode; }

    // Removes the current line, which the one before it then is.
    void DeleteCurrent();
    // Gives the current line, if there is one, the option of the checked radio button.
    void ChangeOption();

    // The text that the string table has for an option; empty when it has none, and before Load.
    [[nodiscard]] CString OptionText(int option) const;

  protected:
    afx_msg void OnSelectionChanged();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);

    DECLARE_MESSAGE_MAP()

  private:
    [[nodiscard]] CString LineOf(const CString& name, int option) const;
    bool AddLine(const CString& name, int option);
    void LoadItem(ListedNames& listed, const std::string& name, int option);
    [[nodiscard]] CString NameOf(int index) const;
    // All bits set when there is no current line.
    [[nodiscard]] int CurrentOption() const;
    void SelectCurrent();
    void UpdateDeleteButton();
    void ShowOption();
    void EnableOptions(BOOL enable);
    void PlaceOverCurrent(CEdit& edit);

    CButton& m_addButton;
    CButton& m_deleteButton;
    std::array<CString, ProcessOptionMask + 1> m_optionTexts; // thousands of lines share them
    int m_current = -1;
    bool m_addMode = true; // false while a name is being typed
};
