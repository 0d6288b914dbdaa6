// CFileDialog over the system's dialog, driven by a thread that plays the user.
#include "TestDialogs.h"
#include "ThreadState.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace {

using namespace std::chrono_literals;

// Waits until a dialog is in front of the owner and calls `act` with it; gives up after ten seconds.
template <typename Act>
std::thread WhenADialogIsUp(HWND owner, Act act)
{
    return std::thread([=] {
        for (int wait = 0; wait < 200; ++wait) {
            const HWND dialog = GetLastActivePopup(owner);
            if (dialog != owner && IsWindowVisible(dialog)) {
                act(dialog);
                return;
            }
            std::this_thread::sleep_for(50ms);
        }
        ADD_FAILURE() << "no dialog came up";
    });
}

CString TempFile(const char* name)
{
    char directory[MAX_PATH] = "";
    GetTempPathA(MAX_PATH, directory);
    char full[MAX_PATH] = "";
    GetLongPathNameA(directory, full, MAX_PATH);
    return CString(full) + name;
}

struct FileDialogTest : testing::Test
{
    CTestOwner owner;
};

TEST_F(FileDialogTest, AnswersThePathThatTheUserConfirms)
{
    const CString path = TempFile("LOGIN.BAT");
    CFileDialog dialog(FALSE, nullptr, path, OFN_HIDEREADONLY, "Command Files (*.bat)|*.bat||", &owner);
    std::thread user = WhenADialogIsUp(owner, [](HWND window) { PostMessageA(window, WM_COMMAND, IDOK, 0); });
    const INT_PTR result = dialog.DoModal();
    user.join();

    EXPECT_EQ(result, IDOK);
    EXPECT_STRCASEEQ(dialog.GetPathName(), path);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST_F(FileDialogTest, AnswersCancelWhenTheUserDoesSo)
{
    CFileDialog dialog(TRUE, "bat", nullptr, OFN_HIDEREADONLY, nullptr, &owner);
    std::thread user =
        WhenADialogIsUp(owner, [](HWND window) { PostMessageA(window, WM_COMMAND, IDCANCEL, 0); });
    const INT_PTR result = dialog.DoModal();
    user.join();

    EXPECT_EQ(result, IDCANCEL);
}

TEST_F(FileDialogTest, GivesTheSystemTheFilterInItsOwnForm)
{
    const CFileDialog dialog(FALSE, nullptr, nullptr, OFN_HIDEREADONLY, "Command Files (*.bat)|*.bat||");

    EXPECT_STREQ(dialog.m_ofn.lpstrFilter, "Command Files (*.bat)");
    const char* pattern = dialog.m_ofn.lpstrFilter + lstrlenA(dialog.m_ofn.lpstrFilter) + 1;
    EXPECT_STREQ(pattern, "*.bat");
    EXPECT_EQ(pattern[6], '\0');
}

TEST_F(FileDialogTest, TakesAFilterWhoseFirstNameIsEmpty)
{
    const CFileDialog dialog(TRUE, nullptr, nullptr, 0, "|*.bat||");

    EXPECT_EQ(dialog.m_ofn.lpstrFilter[0], '\0');
    EXPECT_STREQ(dialog.m_ofn.lpstrFilter + 1, "*.bat");
}

TEST_F(FileDialogTest, TakesAFilterWhereverItIsMoved)
{
    const CFileDialog dialog(TRUE, nullptr, nullptr, 0, "a|b||");

    EXPECT_EQ(dialog.m_ofn.lpstrFilter[1], '\0');
    EXPECT_NE(dialog.m_ofn.Flags & OFN_EXPLORER, 0U);
}

void CALLBACK MakeTemporaryAndCancel(HWND /*owner*/, UINT /*message*/, UINT_PTR timer, DWORD /*time*/)
{
    const HWND dialog = GetActiveWindow();
    if (dialog == nullptr)
        return;
    KillTimer(nullptr, timer);
    CWnd::FromHandle(dialog);
    PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
}

TEST_F(FileDialogTest, LeavesNoTemporaryObjects)
{
    owner.DestroyWindow();
    const size_t before = CThreadState::Get().CountTemporaries();
    CFileDialog dialog(TRUE);
    SetTimer(nullptr, 0, 200, &MakeTemporaryAndCancel);
    dialog.DoModal();

    EXPECT_EQ(CThreadState::Get().CountTemporaries(), before);
}

TEST_F(FileDialogTest, ClosesWhenAHandlerThrowsMeanwhile)
{
    CTestDialog around(IDD_CONTROLS, &owner);
    CFileDialog dialog(FALSE, nullptr, nullptr, OFN_HIDEREADONLY, nullptr, &around);
    std::thread user;
    around.m_step = [&] {
        const HWND target = around.m_hWnd;
        user = WhenADialogIsUp(target, [=](HWND) { SendMessageA(target, WM_THROW, 17, 0); });
        dialog.DoModal();
    };

    int thrown = 0;
    try {
        around.DoModal();
    } catch (int number) {
        thrown = number;
    }
    user.join();
    EXPECT_EQ(thrown, 17);
    EXPECT_EQ(DialogsOfThread(), 0);
}

} // namespace
