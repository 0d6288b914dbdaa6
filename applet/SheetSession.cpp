// The sequence of one opening of the sheet.
#include "applet/SheetSession.h"

#include "applet/CplPropSheet.h"
#include "applet/HelpKey.h"
#include "applet/RestartDecision.h"
#include "applet/SheetTitle.h"
#include "applet/VtnCpl.h"
#include "resources/resource.h"
#include "sysaccess/AgentRestart.h"
#include "sysaccess/core/CommandLine.h"
#include "sysaccess/core/ConfigurationError.h"
#include "sysaccess/MessageBoxes.h"

#include <optional>
#include <utility>

namespace {

// Makes the Control Panel's window the application's main window for as long as it lives. Above a sheet that
// is up already the window has an object, which then serves both.
class MainWindowScope
{
  public:
    explicit MainWindowScope(HWND controlPanel) : m_window(CWnd::FromHandlePermanent(controlPanel))
    {
        if (m_window == nullptr) {
            m_own.Attach(controlPanel);
            m_window = &m_own;
        }
        m_former = std::exchange(theApp.m_pMainWnd, m_window);
    }
    ~MainWindowScope()
    {
        theApp.m_pMainWnd = m_former;
        m_own.Detach();
    }
    MainWindowScope(const MainWindowScope&) = delete;
    MainWindowScope& operator=(const MainWindowScope&) = delete;

    [[nodiscard]] CWnd* Window() const { return m_window; }

  private:
    CWnd m_own;
    CWnd* m_window;
    CWnd* m_former = nullptr;
};

// Gives the focus back to the window that had it.
class FocusScope
{
  public:
    FocusScope() : m_focus(GetFocus()) {}
    ~FocusScope() { SetFocus(m_focus); }
    FocusScope(const FocusScope&) = delete;
    FocusScope& operator=(const FocusScope&) = delete;

  private:
    HWND m_focus;
};

// Runs the sheet; the decision stays at no restart unless it ended with OK.
RestartDecision RunSheet(std::optional<CVtnCplPropSheet>& sheet, HWND controlPanel)
try {
    MainWindowScope mainWindow(controlPanel);
    sheet.emplace(SheetTitle(), mainWindow.Window());
    sheet->BuildPages();
    if (sheet->DoModal() != IDOK)
        return {};
    return DecideRestart([&](PageRole role) { return sheet->IsChanged(role); });
} catch (ConfigurationError textId) {
    MessageBoxById(controlPanel, static_cast<UINT>(textId), IDS_ERROR_CAPTION, MB_ICONHAND);
    return {};
}

// Offers the restart that the new configuration needs. The reboot notice follows whatever the user answered.
void RestartAsDecided(const RestartDecision& decision, HWND controlPanel)
{
    if (!decision.restartAgents || CommandLineContains(setupSwitch))
        return;
    RestartAgentServices(controlPanel);
    if (decision.rebootNotice)
        MessageBoxById(controlPanel, IDS_REBOOT_NOTICE, IDS_APPLET_NAME, MB_TASKMODAL | MB_ICONHAND);
}

} // namespace

void RunSheetSession(HWND controlPanel)
{
    const FocusScope focus;
    std::optional<CVtnCplPropSheet> sheet;
    RestartDecision decision;
    {
        const HelpKeyHook helpKey;
        decision = RunSheet(sheet, controlPanel);
    }
    RestartAsDecided(decision, controlPanel);
}
