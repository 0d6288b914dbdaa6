// The dialog that shows what the applet is waiting for while its only thread is busy.
#pragma once

#include "resources/resource.h"

#include <afxwin.h>
#include <memory>
#include <optional>

// Modeless and without buttons. The thread handles no messages while it is up, not even those that others
// send, which might begin once more what is being waited for; so it paints itself whenever its text changes.
// Its destructor keeps it on the screen, asleep, until its last text has been readable for a second.
class CPleaseWaitDlg : public CDialog
{
  public:
    enum
    {
        IDD = IDD_PLEASE_WAIT
    };

    // The caller must Create(IDD) it next. `minimumDisplay` is not looked at: a second suits every caller.
    CPleaseWaitDlg(const char* message, DWORD minimumDisplay, CWnd* parent);
    ~CPleaseWaitDlg() override;

    // Shows another text, at once and for a second at least.
    void SetMessage(const char* message);

  protected:
    void DoDataExchange(CDataExchange* pDX) override;
    afx_msg int OnCreate(LPCREATESTRUCT createStruct);

    DECLARE_MESSAGE_MAP()

  private:
    // Sleeps for what is left of the minimum.
    void KeepReadable() const;

    CString m_message;
    DWORD m_minimumDisplay; // milliseconds
    DWORD m_shownSince = 0; // GetTickCount when the text appeared
    std::optional<CWaitCursor> m_waitCursor;
};

// Where the starts and stops of one procedure keep their one dialog: empty until the first of them shows it.
using PleaseWaitSlot = std::unique_ptr<CPleaseWaitDlg>;

// Shows the text in the slot's dialog, which is made, centred over `owner` (may be null), when there is none.
// Returns the dialog's window; null when it cannot be made, which keeps nobody from the work itself.
HWND ShowPleaseWait(HWND owner, const char* message, PleaseWaitSlot& slot);
