// What the user sees of services that start and stop; see the header.
#include "sysaccess/ServiceStartStop.h"

#include "resources/resource.h"
#include "sysaccess/core/ServiceWait.h"
#include "sysaccess/MessageBoxes.h"

namespace {

// A null window would make Windows repaint the whole screen.
void Repaint(HWND window)
{
    if (window == nullptr)
        return;
    InvalidateRect(window, nullptr, TRUE);
    UpdateWindow(window);
}

// A text of the string table with the service's name in its place.
CString ServiceText(UINT textId, const std::string& displayName)
{
    CString text;
    text.Format(LoadText(textId), displayName.c_str());
    return text;
}

} // namespace

void ServiceDialogs::OnStarting(const std::string& displayName)
{
    ShowPleaseWait(m_owner, ServiceText(IDS_STARTING, displayName), m_pleaseWait);
    m_repainted = m_owner;
}

void ServiceDialogs::OnStopping(const std::string& displayName)
{
    m_repainted = ShowPleaseWait(m_owner, ServiceText(IDS_STOPPING, displayName), m_pleaseWait);
}

void ServiceDialogs::OnWaiting()
{
    Repaint(m_repainted);
}

void ServiceDialogs::OnStartFailed(const std::string& displayName)
{
    MessageBoxText(m_owner, ServiceText(IDS_CANNOT_START, displayName), MB_ICONHAND);
}

void ServiceDialogs::OnStopFailed(const std::string& displayName)
{
    MessageBoxText(m_owner, ServiceText(IDS_CANNOT_STOP, displayName), MB_ICONHAND);
}

void ServiceDialogs::OnNotControllable(DWORD hostState)
{
    const UINT text = IsPendingState(hostState) ? IDS_AGENTS_PENDING : IDS_AGENTS_UNKNOWN_STATE;
    MessageBoxById(m_owner, text, IDS_APPLET_NAME, MB_ICONHAND);
}

bool ServiceDialogs::IsRestartWanted(DWORD hostState)
{
    const UINT question = hostState == SERVICE_STOPPED ? IDS_START_QUESTION : IDS_RESTART_QUESTION;
    return MessageBoxById(m_owner, question, IDS_APPLET_NAME, MB_YESNO | MB_ICONINFORMATION) == IDYES;
}

bool WaitForServiceState(HWND window, SC_HANDLE service, SERVICE_STATUS& status, DWORD wantedState)
{
    return WaitForServiceState(service, status, wantedState, [&] { Repaint(window); });
}

bool StartServiceWithProgress(HWND owner, const char* serviceName, PleaseWaitSlot& pleaseWait)
{
    ServiceDialogs dialogs(owner, pleaseWait);
    return StartServiceWithProgress(serviceName, dialogs);
}

bool StopServiceWithProgress(HWND owner, const char* serviceName, PleaseWaitSlot& pleaseWait)
{
    ServiceDialogs dialogs(owner, pleaseWait);
    return StopServiceWithProgress(serviceName, dialogs);
}
