// See the header.
#include "support/UiThread.h"

#include "support/Expect.h"
#include "support/SystemFunction.h"

#include <stdexcept>
#include <utility>

namespace support {
namespace {

constexpr char frameClass[] = "vtnmgmt test frame";
constexpr char frameTitle[] = "Control Panel";

// Posted to the frame behind other messages; its arrival says that those have been handled.
constexpr UINT markerMessage = WM_APP;

LRESULT CALLBACK FrameProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != markerMessage)
        return DefWindowProcA(window, message, wParam, lParam);
    SetWindowLongPtrA(window, GWLP_USERDATA, static_cast<LONG_PTR>(wParam));
    return 0;
}

BOOL CALLBACK AppendVisible(HWND window, LPARAM windows)
{
    if (IsWindowVisible(window) != FALSE)
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

// Presses the button of a dialog or message box that changes least.
void Dismiss(HWND window)
{
    for (const int button : {IDCANCEL, IDNO, IDABORT, IDOK}) {
        const HWND control = GetDlgItem(window, button);
        if (control == nullptr)
            continue;
        PostMessageA(window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(control));
        return;
    }
    PostMessageA(window, WM_CLOSE, 0, 0);
}

// Takes a job off the count when it has ended, however it ends.
class Finish
{
  public:
    explicit Finish(std::atomic<int>& unfinished) : m_unfinished(unfinished) {}
    ~Finish() { --m_unfinished; }
    Finish(const Finish&) = delete;
    Finish& operator=(const Finish&) = delete;

  private:
    std::atomic<int>& m_unfinished;
};

std::string Titles(const std::vector<HWND>& windows)
{
    std::string titles;
    for (const HWND window : windows) {
        wchar_t title[128] = L"";
        // Unlike WM_GETTEXT, it asks nothing of a thread that may hang.
        InternalGetWindowText(window, &title[0], static_cast<int>(std::size(title)));
        titles += " \"" + std::string(&title[0], &title[std::wcslen(&title[0])]) + "\"";
    }
    return titles;
}

} // namespace

bool WaitUntil(const std::function<bool()>& isReached, std::chrono::milliseconds limit)
{
    // A test may have replaced Sleep by a clock that does not wait.
    const auto sleep = SystemFunction<decltype(Sleep)>("kernel32.dll", "Sleep");
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!isReached()) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        sleep(2);
    }
    return true;
}

UiThread::UiThread()
    : m_wake(CreateEventA(nullptr, FALSE, FALSE, nullptr)),
      m_ready(CreateEventA(nullptr, TRUE, FALSE, nullptr)),
      m_thread(CreateThread(nullptr, 0, &Main, this, 0, &m_id))
{
    WaitForSingleObject(m_ready, INFINITE);
}

UiThread::~UiThread()
{
    Clear();
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    SetEvent(m_wake);
    if (WaitForSingleObject(m_thread, static_cast<DWORD>(defaultLimit.count())) != WAIT_OBJECT_0) {
        ADD_FAILURE() << "the UI thread hangs; it is ended by force";
        TerminateThread(m_thread, 1);
    }
    for (const HANDLE handle : {m_thread, m_ready, m_wake})
        CloseHandle(handle);
}

std::future<LONG> UiThread::Start(std::function<LONG()> job)
{
    // A job counts as finished before its result can be had, so whoever has the result sees an idle thread.
    Job task([this, run = std::move(job)] {
        const Finish finish(m_unfinished);
        return run();
    });
    ++m_unfinished;
    std::future<LONG> result = task.get_future();
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(task));
    }
    SetEvent(m_wake);
    return result;
}

void UiThread::Settle(std::chrono::milliseconds limit) const
{
    // The second marker stands behind what the handling of the first messages posted.
    for (int round = 0; round < 2; ++round) {
        const LONG_PTR marker = GetWindowLongPtrA(m_frame, GWLP_USERDATA) + 1;
        PostMessageA(m_frame, markerMessage, static_cast<WPARAM>(marker), 0);
        const auto hasArrived = [&] {
            return IsWindow(m_frame) == FALSE || GetWindowLongPtrA(m_frame, GWLP_USERDATA) == marker;
        };
        if (!WaitUntil(hasArrived, limit))
            throw std::runtime_error("the UI thread handles no messages");
    }
}

bool UiThread::Clear()
{
    if (IsIdle())
        return true;
    ADD_FAILURE() << "the test left something running on the UI thread; windows:" << Titles(Windows());
    const auto end = std::chrono::steady_clock::now() + defaultLimit;
    while (std::chrono::steady_clock::now() < end) {
        for (const HWND window : Windows())
            Dismiss(window);
        if (WaitUntil([this] { return IsIdle(); }, std::chrono::milliseconds(300)))
            return true;
    }
    return false;
}

std::vector<HWND> UiThread::Windows() const
{
    std::vector<HWND> windows;
    EnumThreadWindows(m_id, &AppendVisible, reinterpret_cast<LPARAM>(&windows));
    std::erase(windows, m_frame);
    return windows;
}

HWND UiThread::Focus() const
{
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(m_id, &info) == FALSE ? nullptr : info.hwndFocus;
}

DWORD UiThread::Main(void* thread)
{
    auto* self = static_cast<UiThread*>(thread);
    self->CreateFrame();
    SetEvent(self->m_ready);
    self->Loop();
    DestroyWindow(self->m_frame);
    return 0;
}

void UiThread::CreateFrame()
{
    WNDCLASSA frame{};
    frame.lpfnWndProc = &FrameProcedure;
    frame.hInstance = GetModuleHandleA(nullptr);
    frame.lpszClassName = &frameClass[0];
    RegisterClassA(&frame);
    m_frame = CreateWindowExA(0, &frameClass[0], &frameTitle[0], WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10,
                              300, 200, nullptr, nullptr, frame.hInstance, nullptr);
}

void UiThread::Loop()
{
    while (!IsEnding()) {
        PumpMessages();
        RunJobs();
        // Whoever adds a job or ends the thread sets the event afterwards, so nothing is missed.
        MsgWaitForMultipleObjects(1, &m_wake, FALSE, INFINITE, QS_ALLINPUT);
    }
}

void UiThread::PumpMessages()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

void UiThread::RunJobs()
{
    std::unique_lock lock(m_mutex);
    while (!m_jobs.empty()) {
        Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        lock.unlock();
        job();
        lock.lock();
    }
}

bool UiThread::IsEnding() const
{
    const std::lock_guard lock(m_mutex);
    return m_isEnding;
}

} // namespace support
