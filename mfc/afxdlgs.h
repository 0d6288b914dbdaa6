// Property sheets and pages, and the file dialog.
#pragma once

#include "afxwin.h"

#include <commdlg.h>
#include <memory>
#include <prsht.h>
#include <vector>

class CCreationHook;
class CPropertySheet;

#define ID_APPLY_NOW 0x3021 // the sheet's Apply button, made by the system
#define ID_HELP 0xE146      // the help command

// A page of a sheet. Its window is made when the page is first shown; its members live as long as the page.
class CPropertyPage : public CDialog
{
    DECLARE_DYNAMIC(CPropertyPage)

  public:
    // The tab shows the template's caption, or a string-table entry when nIDCaption is not 0.
    explicit CPropertyPage(UINT nIDTemplate, UINT nIDCaption = 0);
    ~CPropertyPage() override;

    PROPSHEETPAGEA m_psp = {}; // for the sheet; flags may be added before its DoModal

    // Whether the sheet's Apply button is to be enabled on behalf of this page.
    void SetModified(BOOL bChanged = TRUE);

    // The page is being shown; FALSE refuses. The base runs UpdateData(FALSE), except the first time, when
    // OnInitDialog has done it.
    virtual BOOL OnSetActive();
    // The page is being left, OK included; FALSE keeps it. The base runs UpdateData(TRUE).
    virtual BOOL OnKillActive();
    // OK or Apply, on every page that has been shown; FALSE keeps the sheet open. The base runs OnOK.
    virtual BOOL OnApply();
    // Cancel, on every page that has been shown. The base runs OnCancel.
    virtual void OnReset();
    // Whether Cancel is allowed, asked of the active page.
    virtual BOOL OnQueryCancel();
    void OnOK() override;
    void OnCancel() override;

  protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    LRESULT FailureAnswer(UINT message, WPARAM wParam, LPARAM lParam) const override;
    void PostNcDestroy() override;

  private:
    friend class CPropertySheet;

    static UINT CALLBACK PageCallback(HWND hWnd, UINT message, PROPSHEETPAGEA* page);
    void RecordOutcome(int outcome) const;

    std::unique_ptr<CCreationHook> m_creation; // while the page's window is being made
    bool m_shownBefore = false;
};

// A sheet of pages, run by its own message loop over the system's modeless sheet, so that message-filter
// hooks see its keys and what a handler throws can be kept.
class CPropertySheet : public CWnd
{
    DECLARE_DYNAMIC(CPropertySheet)

  public:
    // The parent, or else the application's main window, owns the sheet's window.
    explicit CPropertySheet(LPCSTR pszCaption, CWnd* pParentWnd = nullptr, UINT iSelectPage = 0);
    explicit CPropertySheet(UINT nIDCaption, CWnd* pParentWnd = nullptr, UINT iSelectPage = 0);
    ~CPropertySheet() override;

    PROPSHEETHEADERA m_psh = {}; // for the system; flags may be added before DoModal

    // Before DoModal. The page is not owned and must outlive it.
    void AddPage(CPropertyPage* pPage);
    // The pages added so far, counted from 0.
    [[nodiscard]] int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    [[nodiscard]] CPropertyPage* GetPage(int nPage) const { return m_pages[static_cast<size_t>(nPage)]; }

    // IDOK or IDCANCEL, the argument of EndDialog, or -1 when the sheet cannot be made. Throws what a handler
    // throws meanwhile; the windows are gone and the owner enabled again by then. Can be called again.
    virtual INT_PTR DoModal();
    // Ends the sheet without asking its pages.
    void EndDialog(int nEndID);

    // The page in front; before DoModal the one that will be.
    [[nodiscard]] int GetActiveIndex() const;
    // Null when none is, as before the first page was added.
    [[nodiscard]] CPropertyPage* GetActivePage() const;
    // FALSE when the page in front refuses to be left.
    BOOL SetActivePage(int nPage);
    // As if the user pressed PSBTN_OK, PSBTN_CANCEL, PSBTN_HELP, ...; posted.
    BOOL PressButton(int nButton);

    // After the system has filled the sheet, whose first page is then in front. The base centres the sheet
    // over its owner and returns what the system answers.
    virtual BOOL OnInitDialog();

    // Commands that the sheet does not handle go on to its parent window's object and the application object.
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

    void EndFailedLoop() override;
    void AfterMessage() override;

  protected:
    void PostNcDestroy() override;
    BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

    DECLARE_MESSAGE_MAP()

  private:
    friend class CPropertyPage;

    void CreateSheet(HWND owner);
    void RunLoop();
    [[nodiscard]] bool IsOverAfter(const MSG& message) const;
    void Pump(MSG& message) const;
    static void WakeLoop();

    CString m_strCaption;
    CWnd* m_pParentWnd;
    std::vector<CPropertyPage*> m_pages;
    INT_PTR m_result = IDCANCEL;
    bool m_ended = false;     // by EndDialog or a failure
    bool m_mayBeOver = false; // by the message that is being handled
};

// The system's dialog that asks for the path of a file to open or to save.
class CFileDialog : public CDialog
{
    DECLARE_DYNAMIC(CFileDialog)

  public:
    // The filter is "text|pattern|text|pattern||". Without a parent the
    // application's main window owns the dialog.
    explicit CFileDialog(BOOL bOpenFileDialog, LPCSTR lpszDefExt = nullptr, LPCSTR lpszFileName = nullptr,
                         DWORD dwFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCSTR lpszFilter = nullptr,
                         CWnd* pParentWnd = nullptr);

    OPENFILENAMEA m_ofn = {}; // may be changed before DoModal

    // IDOK or IDCANCEL, the latter also when the dialog cannot be made.
    INT_PTR DoModal() override;
    // The chosen file with its directory, after IDOK.
    [[nodiscard]] CString GetPathName() const { return m_ofn.lpstrFile; }

    void EndFailedLoop() override;

  private:
    BOOL m_bOpenFileDialog;
    CWnd* m_pParentWnd;
    CString m_filter; // with zeros for the bars
    char m_path[MAX_PATH] = "";
};
