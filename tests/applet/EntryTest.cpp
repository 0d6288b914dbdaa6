// The library's entry: the Control Panel's messages and what they answer.
#include "applet/AppletTest.h"
#include "imports/ImportHook.h"
#include "support/ModuleMemory.h"

#include <array>
#include <cpl.h>
#include <cstring>
#include <limits>

namespace {

using Entry = AppletTest;

constexpr LONG untouched = 0x5A5A5A5A;

CPLINFO UntouchedInfo()
{
    return {untouched, untouched, untouched, untouched};
}

bool IsUntouched(const CPLINFO& info)
{
    const CPLINFO expected = UntouchedInfo();
    return std::memcmp(&info, &expected, sizeof info) == 0;
}

TEST_F(Entry, InitAnswers1EveryTime)
{
    EXPECT_EQ(m_host.Send(CPL_INIT), 1);
    EXPECT_EQ(m_host.Send(CPL_INIT), 1);
}

TEST_F(Entry, HoldsOneApplet)
{
    EXPECT_EQ(m_host.Send(CPL_GETCOUNT), 1);
}

TEST_F(Entry, InquireReturnsIconNameAndDescription)
{
    CPLINFO info = UntouchedInfo();
    EXPECT_EQ(m_host.Send(CPL_INQUIRE, 0, reinterpret_cast<LPARAM>(&info)), 1);
    EXPECT_EQ(info.idIcon, 1);
    EXPECT_EQ(info.idName, 1);
    EXPECT_EQ(info.idInfo, 2);
    EXPECT_EQ(info.lData, 0);
}

class InquireOddRecord : public Entry, public testing::WithParamInterface<LPARAM>
{
};

TEST_P(InquireOddRecord, Answers1AndWritesNothing)
{
    CPLINFO info = UntouchedInfo();
    EXPECT_EQ(m_host.Send(CPL_INQUIRE, GetParam(), reinterpret_cast<LPARAM>(&info)), 1);
    EXPECT_TRUE(IsUntouched(info));
}

INSTANTIATE_TEST_SUITE_P(Records, InquireOddRecord,
                         testing::Values(-1, 1, 2, 0x7FFFFFFF, 0x80000000LL, 0x100000000LL,
                                         LPARAM{MINLONG_PTR}));

TEST_F(Entry, InquireWithoutARecordToFillAnswers1)
{
    EXPECT_EQ(m_host.Send(CPL_INQUIRE, 0, 0), 1);
}

class UnknownMessage : public Entry, public testing::WithParamInterface<UINT>
{
};

TEST_P(UnknownMessage, Answers0AndChangesNothing)
{
    std::array<BYTE, sizeof(NEWCPLINFOA)> info{};
    info.fill(0x5A);
    const auto before = info;
    EXPECT_EQ(m_host.Send(GetParam(), 0, reinterpret_cast<LPARAM>(info.data())), 0);
    EXPECT_EQ(info, before);
}

INSTANTIATE_TEST_SUITE_P(Messages, UnknownMessage,
                         testing::Values(0U, UINT{CPL_SELECT}, UINT{CPL_EXIT}, UINT{CPL_NEWINQUIRE}, 9U,
                                         UINT{CPL_STARTWPARMSA}, 0xFFFFFFFFU));

TEST_F(Entry, StopAnswers0)
{
    EXPECT_EQ(m_host.Send(CPL_STOP), 0);
}

TEST_F(Entry, ADoubleClickWithoutMemoryIsReportedAsAnError)
{
    m_boxes.Answer(IDOK);
    support::ModuleMemory memory(m_host.Module());
    memory.Arm(1, std::numeric_limits<std::size_t>::max());
    EXPECT_EQ(m_host.Send(CPL_DBLCLK), 0);
    memory.Disarm();
    ASSERT_EQ(m_boxes.Shown().size(), 1U);
    const support::ShownBox box = m_boxes.Shown().front();
    EXPECT_EQ(box.owner, m_host.Frame());
    EXPECT_TRUE(box.text.starts_with("There is not enough memory to go on.")) << box.text;
    EXPECT_EQ(box.caption, "Management Agents Error");
    EXPECT_EQ(box.style, UINT{MB_ICONHAND});
}

TEST_F(Entry, OnlyUnknownMessagesMakeTheirText)
{
    std::string format;
    int number = 0;
    // wsprintfA takes any number of arguments; the applet gives it one.
    auto hook = support::HookImport<int(LPSTR, LPCSTR, int)>(m_host.Module(), "wsprintfA",
                                                             [&](auto, LPSTR, LPCSTR text, int value) {
                                                                 format = text;
                                                                 number = value;
                                                                 return 0;
                                                             });
    m_host.Send(CPL_GETCOUNT);
    EXPECT_EQ(format, "");
    m_host.Send(CPL_EXIT);
    EXPECT_EQ(format, "vtnmgmt!CPlApplet: Unknown CPL message: %d\n");
    EXPECT_EQ(number, CPL_EXIT);
}

TEST_F(Entry, EachInitSetsUpHelp)
{
    std::string copied;
    std::string registered;
    auto copy = support::HookImport<decltype(_strdup)>(m_host.Module(), "_strdup",
                                                       [&](auto original, const char* text) {
                                                           copied = text;
                                                           return original(text);
                                                       });
    auto registration = support::HookImport<decltype(RegisterWindowMessageA)>(
        m_host.Module(), "RegisterWindowMessageA", [&](auto original, LPCSTR name) {
            registered = name;
            return original(name);
        });
    SetEnvironmentVariableA("WINDIR", "D:\\ELSEWHERE");
    m_host.Send(CPL_INIT);
    SetEnvironmentVariableA("WINDIR", "C:\\windows");
    EXPECT_EQ(copied, "D:\\ELSEWHERE\\System32\\vtnmgmt\\vtmghost\\vtnmgmt.chm");
    EXPECT_EQ(registered, "ShellHelp");
}

TEST_F(Entry, TheHelpPathNeedsNoWindowsDirectory)
{
    std::string copied;
    auto copy = support::HookImport<decltype(_strdup)>(m_host.Module(), "_strdup",
                                                       [&](auto original, const char* text) {
                                                           copied = text;
                                                           return original(text);
                                                       });
    SetEnvironmentVariableA("WINDIR", nullptr);
    m_host.Send(CPL_INIT);
    EXPECT_EQ(copied, "\\System32\\vtnmgmt\\vtmghost\\vtnmgmt.chm");
    SetEnvironmentVariableA("WINDIR", std::string(5000, 'x').c_str());
    m_host.Send(CPL_INIT);
    SetEnvironmentVariableA("WINDIR", "C:\\windows");
    EXPECT_EQ(copied, "\\System32\\vtnmgmt\\vtmghost\\vtnmgmt.chm");
}

} // namespace
