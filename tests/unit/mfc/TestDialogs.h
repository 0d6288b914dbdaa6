// Dialogs, pages and a sheet that do what a test says, and what tests look at around them.
#pragma once

#include "resource.h"

#include <afxdlgs.h>
#include <afxwin.h>
#include <functional>
#include <string>
#include <vector>

// Runs m_step of a window in its modal loop.
constexpr UINT WM_STEP = WM_APP + 1;
// Makes a window throw m_thrown from its handler.
constexpr UINT WM_THROW = WM_APP + 2;
constexpr UINT ID_SHEET_COMMAND = 0x8001;
constexpr UINT ID_APP_COMMAND = 0x8002;
constexpr UINT ID_NOBODYS_COMMAND = 0x8003;
constexpr UINT ID_CONTROL_COMMAND = 0x7FFF; // below the commands, so never routed

// What happened, in order.
using Log = std::vector<std::string>;

// Counts the commands that nobody before it handled.
class CTestApp : public CWinApp
{
  public:
    CTestApp() : CWinApp("mfc_test") {}

    afx_msg void OnAppCommand() { ++m_commands; }

    int m_commands = 0;

    DECLARE_MESSAGE_MAP()
};

CTestApp& TestApp();

// Runs m_atInit at the end of OnInitDialog and then, in its loop, m_step, which has to end it.
class CTestDialog : public CDialog
{
  public:
    explicit CTestDialog(UINT id = IDD_CONTROLS, CWnd* parent = nullptr) : CDialog(id, parent) {}

    BOOL OnInitDialog() override;
    void OnOK() override;
    void DoDataExchange(CDataExchange* pDX) override;

    afx_msg LRESULT OnStep(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnThrow(WPARAM wParam, LPARAM lParam);
    afx_msg void OnButton();

    std::function<void()> m_atInit;
    std::function<void()> m_step;
    std::function<void()> m_atOk;
    std::function<void()> m_atButton;
    std::function<void(CDataExchange*)> m_exchange;
    int m_buttons = 0;

    DECLARE_MESSAGE_MAP()
};

// Writes what happens to it, with its name, into a log.
class CTestPage : public CPropertyPage
{
  public:
    CTestPage(UINT id, Log& log, std::string name);

    BOOL OnInitDialog() override;
    BOOL OnSetActive() override;
    BOOL OnKillActive() override;
    BOOL OnApply() override;
    BOOL OnQueryCancel() override { return m_mayCancel; }
    void OnOK() override;
    void OnCancel() override;
    void DoDataExchange(CDataExchange* pDX) override;

    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg LRESULT OnThrow(WPARAM wParam, LPARAM lParam);
    afx_msg void OnButton();

    Log& m_log;
    std::string m_name;
    std::function<void()> m_atCreate;
    std::function<void()> m_atInit;
    std::function<void()> m_atOk;
    std::function<void()> m_atButton;
    CString m_text; // in the edit control
    BOOL m_mayShow = TRUE;
    BOOL m_mayLeave = TRUE;
    BOOL m_mayApply = TRUE;
    BOOL m_mayCancel = TRUE;

    DECLARE_MESSAGE_MAP()

  private:
    void Note(const char* what) { m_log.push_back(m_name + " " + what); }
};

// As CTestDialog, for a sheet.
class CTestSheet : public CPropertySheet
{
  public:
    explicit CTestSheet(CWnd* parent = nullptr, UINT selected = 0) : CPropertySheet("Sheet", parent, selected)
    {
    }

    BOOL OnInitDialog() override;

    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg LRESULT OnStep(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnThrow(WPARAM wParam, LPARAM lParam);
    afx_msg void OnHelp() { ++m_helps; }
    afx_msg void OnSheetCommand() { ++m_commands; }

    std::function<void()> m_atCreate;
    std::function<void()> m_atInit;
    std::function<void()> m_step;
    bool m_refused = false; // OnCreate answers -1
    int m_helps = 0;
    int m_commands = 0;

    DECLARE_MESSAGE_MAP()
};

// A visible top-level window to own dialogs.
class CTestOwner : public CWnd
{
  public:
    CTestOwner();

    afx_msg LRESULT OnEnterIdle(WPARAM wParam, LPARAM lParam);

    std::function<void()> m_atIdle; // run when the loop of a dialog begins to wait

    DECLARE_MESSAGE_MAP()
};

// The top-level windows of this thread that are dialogs.
[[nodiscard]] int DialogsOfThread();
// All windows of this thread, those inside others included.
[[nodiscard]] int WindowsOfThread();
