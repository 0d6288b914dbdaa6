// Messages.exe LIBRARY: shows every message of the applet in that library, one after the other, for pictures.
// Prints name and place (WxH+X+Y) of each, and closes it when it is given a line.
#include "../support/Error.h"
#include "Messages.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <thread>
#include <windows.h>

namespace {

constexpr DWORD pollInterval = 20; // milliseconds

std::string LoadText(HINSTANCE library, UINT id)
{
    char text[1024] = {};
    demo::RequireCall(LoadStringA(library, id, text, sizeof text) != 0,
                      "loading the text " + std::to_string(id));
    return text;
}

std::string TextOf(HINSTANCE library, const demo::Message& message)
{
    std::string text = LoadText(library, message.textId);
    if (message.inserted != nullptr)
        text.replace(text.find('%'), 2, message.inserted);
    return text;
}

BOOL CALLBACK KeepVisible(HWND window, LPARAM found)
{
    if (IsWindowVisible(window) == FALSE)
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND WaitForWindow(DWORD thread)
{
    HWND window = nullptr;
    while (EnumThreadWindows(thread, &KeepVisible, reinterpret_cast<LPARAM>(&window)), window == nullptr)
        Sleep(pollInterval);
    return window;
}

// Reports the window that `thread` shows, and waits for the line that ends it.
HWND Report(DWORD thread, const char* name)
{
    const HWND window = WaitForWindow(thread);
    SendMessageA(window, WM_NCACTIVATE, TRUE, 0); // without a window manager no window looks active
    RECT place{};
    GetWindowRect(window, &place);
    std::printf("%s %ldx%ld+%ld+%ld\n", name, place.right - place.left, place.bottom - place.top, place.left,
                place.top);
    std::fflush(stdout);
    for (int c = std::getchar(); c != '\n' && c != EOF;)
        c = std::getchar();
    return window;
}

void ShowBox(HINSTANCE library, const demo::Message& message)
{
    const std::string text = TextOf(library, message);
    const std::string caption = LoadText(library, message.captionId);
    const int answer = (message.style & MB_TYPEMASK) == MB_YESNO ? IDNO : IDOK;
    std::jthread closer([&message, answer, thread = GetCurrentThreadId()] {
        PostMessageA(Report(thread, message.name), WM_COMMAND, static_cast<WPARAM>(answer), 0);
    });
    MessageBoxA(nullptr, text.c_str(), caption.c_str(), message.style);
}

INT_PTR CALLBACK LeaveToDefault(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

void ShowPleaseWait(HINSTANCE library, const demo::Message& message)
{
    const HWND dialog =
        CreateDialogParamA(library, MAKEINTRESOURCEA(IDD_PLEASE_WAIT), nullptr, &LeaveToDefault, 0);
    demo::RequireCall(dialog != nullptr, "making the please-wait dialog");
    SetDlgItemTextA(dialog, IDC_PLEASE_WAIT_TEXT, TextOf(library, message).c_str());
    const DWORD thread = GetCurrentThreadId();
    std::jthread closer([&message, thread] {
        Report(thread, message.name);
        PostThreadMessageA(thread, WM_QUIT, 0, 0);
    });
    for (MSG next; GetMessageA(&next, nullptr, 0, 0) > 0;)
        DispatchMessageA(&next);
    DestroyWindow(dialog);
}

void ShowAll(const char* path)
{
    const HMODULE library = LoadLibraryExA(path, nullptr, LOAD_LIBRARY_AS_DATAFILE);
    demo::RequireCall(library != nullptr, std::string("loading ") + path);
    for (const demo::Message& message : demo::pleaseWaitTexts)
        ShowPleaseWait(library, message);
    for (const demo::Message& message : demo::messages)
        ShowBox(library, message);
    FreeLibrary(library);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: Messages LIBRARY\n", stderr);
        return 2;
    }
    try {
        ShowAll(argv[1]);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "Messages: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
