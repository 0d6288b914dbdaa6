// CDialog, modal and modeless, and the application's part in it.
#include "support/FailNth.h"
#include "support/MessageBoxScript.h"
#include "support/ResourceCount.h"
#include "TestDialogs.h"

#include <gtest/gtest.h>
#include <utility>

namespace {

// Makes a window the application's main window for the length of a scope.
class MainWindow
{
  public:
    explicit MainWindow(CWnd* window) { AfxGetApp()->m_pMainWnd = window; }
    ~MainWindow() { AfxGetApp()->m_pMainWnd = nullptr; }
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
};

TEST(Dialog, AnswersWhatItIsEndedWith)
{
    CTestDialog dialog;
    dialog.m_step = [&] { dialog.EndDialog(42); };

    EXPECT_EQ(dialog.DoModal(), 42);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST(Dialog, EndsWithItsButtons)
{
    CTestDialog dialog;
    dialog.m_step = [&] { dialog.GetDlgItem(IDOK)->PostMessage(BM_CLICK); };
    EXPECT_EQ(dialog.DoModal(), IDOK);
    dialog.m_step = [&] { dialog.GetDlgItem(IDCANCEL)->PostMessage(BM_CLICK); };
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    dialog.m_step = [&] { dialog.PostMessage(WM_CLOSE); };
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    dialog.m_step = [&] { dialog.GetDlgItem(IDC_EDIT)->PostMessage(WM_KEYDOWN, VK_ESCAPE, 1); };
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

TEST(Dialog, MayBeEndedBeforeItIsShown)
{
    CTestDialog dialog;
    dialog.m_atInit = [&] { dialog.EndDialog(5); };

    EXPECT_EQ(dialog.DoModal(), 5);
}

TEST(Dialog, AnswersMinusOneWithoutItsTemplate)
{
    CTestDialog dialog(999);

    EXPECT_EQ(dialog.DoModal(), -1);
    EXPECT_FALSE(dialog.Create(999));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST(Dialog, IsNotMadeWithoutItsCreationHook)
{
    CTestDialog dialog;
    const int windows = support::ResourceCount::Now().windows;
    {
        const support::FailNth<"SetWindowsHookExA", decltype(SetWindowsHookExA)> refuse(
            GetModuleHandleA(nullptr), 1, nullptr, ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_FALSE(dialog.Create(IDD_CONTROLS));
    }
    const support::FailNth<"SetWindowsHookExA", decltype(SetWindowsHookExA)> refuse(
        GetModuleHandleA(nullptr), 1, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(dialog.DoModal(), -1);
    EXPECT_EQ(support::ResourceCount::Now().windows, windows);
}

TEST(Dialog, DisablesItsOwnerWhileItRuns)
{
    CTestOwner owner;
    CTestDialog dialog(IDD_CONTROLS, &owner);
    dialog.m_step = [&] { dialog.EndDialog(owner.IsWindowEnabled() ? 1 : 2); };

    EXPECT_EQ(dialog.DoModal(), 2);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST(Dialog, WithoutAParentBelongsToTheMainWindow)
{
    CTestOwner owner;
    const MainWindow main(&owner);
    CTestDialog dialog;
    CWnd* seen = nullptr;
    dialog.m_step = [&] {
        seen = dialog.GetOwner();
        dialog.EndDialog(1);
    };
    dialog.DoModal();

    EXPECT_EQ(seen, &owner);
}

TEST(Dialog, BelongsToTheWindowAroundItsParent)
{
    CTestOwner owner;
    CWnd child;
    child.CreateEx(0, "EDIT", "", WS_CHILD, CRect(0, 0, 5, 5), &owner, 1);
    CTestDialog dialog;

    EXPECT_TRUE(dialog.Create(IDD_CONTROLS, &child));
    EXPECT_EQ(dialog.GetOwner(), &owner);
}

TEST(Dialog, IsModelessWhenCreated)
{
    CTestOwner owner;
    CTestDialog dialog(IDD_CONTROLS, &owner);
    bool initialised = false;
    dialog.m_atInit = [&] { initialised = true; };

    EXPECT_TRUE(dialog.Create(IDD_CONTROLS));
    EXPECT_TRUE(initialised);
    EXPECT_EQ(dialog.GetOwner(), &owner);
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_TRUE(dialog.DestroyWindow());
    EXPECT_EQ(dialog.m_hWnd, nullptr);
}

TEST(Dialog, DestroysItsWindowWithItself)
{
    HWND window = nullptr;
    {
        CTestDialog dialog;
        dialog.Create(IDD_CONTROLS);
        window = dialog;
        EXPECT_TRUE(IsWindow(window));
    }
    EXPECT_FALSE(IsWindow(window));
}

TEST(Dialog, FillsItsControlsFirst)
{
    CTestDialog dialog;
    CString text("loaded");
    dialog.m_exchange = [&](CDataExchange* pDX) { DDX_Text(pDX, IDC_EDIT, text); };
    CString shown;
    dialog.m_atInit = [&] { dialog.GetDlgItemText(IDC_EDIT, shown); };
    dialog.m_step = [&] {
        dialog.SetDlgItemText(IDC_EDIT, "typed");
        dialog.PostMessage(WM_COMMAND, IDOK);
    };
    dialog.DoModal();

    EXPECT_EQ(shown, "loaded");
    EXPECT_EQ(text, "typed");
}

TEST(Dialog, StaysWhenAValueIsRefusedAtOk)
{
    CTestDialog dialog;
    dialog.m_exchange = [](CDataExchange* pDX) {
        if (pDX->m_bSaveAndValidate)
            pDX->Fail();
    };
    dialog.m_step = [&] {
        dialog.m_step = [&] { dialog.EndDialog(77); };
        dialog.SendMessage(WM_COMMAND, IDOK);
        dialog.PostMessage(WM_STEP);
    };

    EXPECT_EQ(dialog.DoModal(), 77);
}

TEST(Dialog, SendsCommandsOnToItsOwnerAndTheApplication)
{
    CTestSheet owner;
    owner.CreateEx(0, "STATIC", "", WS_OVERLAPPEDWINDOW, CRect(0, 0, 9, 9), nullptr, 0);
    CTestDialog dialog;
    dialog.Create(IDD_CONTROLS, &owner);
    const int before = TestApp().m_commands;
    dialog.SendMessage(WM_COMMAND, ID_SHEET_COMMAND);
    dialog.SendMessage(WM_COMMAND, ID_APP_COMMAND);
    dialog.SendMessage(WM_COMMAND, ID_NOBODYS_COMMAND);

    EXPECT_EQ(owner.m_commands, 1);
    EXPECT_EQ(TestApp().m_commands, before + 1);
}

TEST(Dialog, KeepsNotificationsToItself)
{
    CTestApp& application = TestApp();
    CTestDialog dialog;
    dialog.Create(IDD_CONTROLS);
    const int before = application.m_commands;
    const auto button = reinterpret_cast<LPARAM>(dialog.GetDlgItem(IDC_BUTTON)->m_hWnd);
    dialog.SendMessage(WM_COMMAND, MAKEWPARAM(ID_APP_COMMAND, EN_CHANGE), button);

    EXPECT_EQ(application.m_commands, before);
}

TEST(Dialog, ReleasesItsControlsForTheNextDialog)
{
    CTestDialog dialog;
    CEdit edit;
    dialog.m_exchange = [&](CDataExchange* pDX) { DDX_Control(pDX, IDC_EDIT, edit); };
    HWND bound = nullptr;
    dialog.m_step = [&] {
        bound = edit.m_hWnd;
        dialog.EndDialog(1);
    };
    for (int run = 0; run < 2; ++run) {
        bound = nullptr;
        dialog.DoModal();
        EXPECT_NE(bound, nullptr);
        EXPECT_EQ(edit.m_hWnd, nullptr);
    }
}

TEST(Module, HasOneApplicationAndItsHandles)
{
    EXPECT_EQ(AfxGetApp(), &TestApp());
    EXPECT_STREQ(AfxGetAppName(), "mfc_test");
    EXPECT_EQ(AfxGetInstanceHandle(), GetModuleHandleA(nullptr));
    EXPECT_EQ(AfxGetResourceHandle(), GetModuleHandleA(nullptr));
    EXPECT_EQ(AfxGetApp()->m_hInstance, GetModuleHandleA(nullptr));
    EXPECT_TRUE(AfxGetApp()->InitInstance());
    EXPECT_EQ(AfxGetApp()->ExitInstance(), 0);
}

// What an exported function of another module would see.
HINSTANCE ResourceHandleOf(AFX_MODULE_STATE* state)
{
    AFX_MANAGE_STATE(state);
    return AfxGetResourceHandle();
}

TEST(Module, SwitchesItsStateForAScope)
{
    HINSTANCE other = GetModuleHandleA("comctl32.dll");
    AFX_MODULE_STATE state = {nullptr, other, other};

    EXPECT_EQ(ResourceHandleOf(&state), other);
    EXPECT_EQ(AfxGetResourceHandle(), GetModuleHandleA(nullptr));
    {
        AFX_MANAGE_STATE(&state);
        EXPECT_EQ(AfxGetApp(), nullptr);
        EXPECT_EQ(AfxGetMainWnd(), nullptr);
        EXPECT_EQ(ResourceHandleOf(AfxGetStaticModuleState()), GetModuleHandleA(nullptr));
        EXPECT_EQ(AfxGetInstanceHandle(), other);
    }
    EXPECT_EQ(AfxGetApp(), &TestApp());
}

TEST(Module, ForgetsItsApplicationWithIt)
{
    AFX_MODULE_STATE& state = *AfxGetStaticModuleState();
    CWinApp* const own = std::exchange(state.m_pCurrentWinApp, nullptr);
    {
        const CWinApp other("other");
        EXPECT_EQ(AfxGetApp(), &other);
    }
    EXPECT_EQ(AfxGetApp(), nullptr);
    state.m_pCurrentWinApp = own;
}

TEST(Module, KeepsAnApplicationWhenAnotherGoes)
{
    AFX_MODULE_STATE& state = *AfxGetStaticModuleState();
    CWinApp* const own = std::exchange(state.m_pCurrentWinApp, nullptr);
    {
        const CWinApp other("other");
        state.m_pCurrentWinApp = own;
    }
    EXPECT_EQ(AfxGetApp(), own);
}

TEST(Module, LooksForResourcesInTheGivenModule)
{
    const HINSTANCE own = AfxGetResourceHandle();
    AfxSetResourceHandle(GetModuleHandleA("comctl32.dll"));
    CString text;
    EXPECT_FALSE(text.LoadString(IDS_GREETING));
    AfxSetResourceHandle(own);
    EXPECT_TRUE(text.LoadString(IDS_GREETING));
}

TEST(ApplicationBox, HasTheApplicationsNameAndAnIcon)
{
    support::MessageBoxScript boxes(GetModuleHandleA(nullptr));
    boxes.Answer(IDYES).Answer(IDOK);

    EXPECT_EQ(AfxMessageBox("Go on?", MB_YESNO | MB_ICONQUESTION), IDYES);
    EXPECT_EQ(AfxMessageBox(IDS_GREETING), IDOK);
    support::ExpectBoxes(boxes, {{nullptr, "Go on?", "mfc_test", MB_YESNO | MB_ICONQUESTION},
                                 {nullptr, "Hello", "mfc_test", MB_OK | MB_ICONEXCLAMATION}});
}

} // namespace
