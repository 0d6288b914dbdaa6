// The built vthstutl.dll, on the machine's processes and on made-up ones.
#include "hostutil/TaskRecord.h"
#include "imports/ImportHook.h"
#include "support/ProgramPath.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

// It needs windows.h before it.
#include <tlhelp32.h>

namespace {

using Names = std::vector<std::string>;

struct MadeUpProcess
{
    DWORD id;
    std::wstring name;
};

// Answers the library's questions about processes.
class Processes
{
  public:
    explicit Processes(HMODULE library)
        : m_turn(this), m_first(library, "Process32FirstW", &First), m_next(library, "Process32NextW", &Next)
    {
    }

    std::vector<MadeUpProcess> list;

  private:
    static BOOL WINAPI First(HANDLE snapshot, LPPROCESSENTRY32W entry)
    {
        support::Turn<Processes>::Active().m_position = 0;
        return Next(snapshot, entry);
    }

    static BOOL WINAPI Next(HANDLE /*snapshot*/, LPPROCESSENTRY32W entry)
    {
        Processes& self = support::Turn<Processes>::Active();
        if (self.m_position == self.list.size())
            return FALSE;
        const MadeUpProcess& process = self.list[self.m_position++];
        entry->th32ProcessID = process.id;
        std::fill(std::begin(entry->szExeFile), std::end(entry->szExeFile), L'\0');
        std::copy(process.name.begin(), process.name.end(), std::begin(entry->szExeFile));
        return TRUE;
    }

    std::size_t m_position = 0;
    support::Turn<Processes> m_turn;
    support::ReplacedImport m_first;
    support::ReplacedImport m_next;
};

class HostUtility : public testing::Test
{
  protected:
    HostUtility() : m_library(LoadLibraryA(support::BesideThisProgram("..\\..\\..\\vthstutl.dll").c_str())) {}
    ~HostUtility() override
    {
        std::free(m_list);
        FreeLibrary(m_library);
    }

    // Asks the library; what it answers is freed at the end, as its callers do.
    TaskRecord* Ask()
    {
        const auto getTaskList = reinterpret_cast<GetTaskListFunction>(
            reinterpret_cast<void*>(GetProcAddress(m_library, "GetTaskList")));
        std::free(m_list);
        m_count = 0xFFFFFFFF;
        m_list = getTaskList(&m_count);
        return m_list;
    }

    Names AskForNames()
    {
        Ask();
        Names names;
        for (std::size_t i = 0; i < m_count; ++i)
            names.emplace_back(m_list[i].name.data());
        return names;
    }

    // Reports to the library a code page that has double-byte characters, as the Japanese one has.
    static int WINAPI ConvertToJapanese(UINT, DWORD flags, LPCWCH text, int length, LPSTR buffer, int size,
                                        LPCCH, LPBOOL)
    {
        return WideCharToMultiByte(932, flags, text, length, buffer, size, nullptr, nullptr);
    }
    static BOOL WINAPI IsJapaneseLeadByte(BYTE byte) { return IsDBCSLeadByteEx(932, byte); }

    // Reports to the library the code page UTF-8, for which Windows knows one flag only.
    static UINT WINAPI Utf8CodePage() { return CP_UTF8; }
    static int WINAPI ConvertToUtf8(UINT, DWORD flags, LPCWCH text, int length, LPSTR buffer, int size, LPCCH,
                                    LPBOOL)
    {
        if ((flags & ~DWORD{WC_ERR_INVALID_CHARS}) != 0) {
            SetLastError(ERROR_INVALID_FLAGS);
            return 0;
        }
        return WideCharToMultiByte(CP_UTF8, flags, text, length, buffer, size, nullptr, nullptr);
    }

    HMODULE m_library;
    TaskRecord* m_list = nullptr;
    std::uint32_t m_count = 0;
};

TEST_F(HostUtility, ListsThisVeryProcess)
{
    Ask();
    const auto isThis = [](const TaskRecord& record) { return record.processId == GetCurrentProcessId(); };
    const TaskRecord* const found = std::find_if(m_list, m_list + m_count, isThis);
    ASSERT_NE(found, m_list + m_count);
    EXPECT_STREQ(found->name.data(), "hostutil_test.exe");
}

TEST_F(HostUtility, GivesTheProcessesInTheSystemsOrder)
{
    Processes processes(m_library);
    processes.list = {{4, L"System"}, {20, L"b.exe"}, {8, L"A.exe"}};
    EXPECT_EQ(AskForNames(), (Names{"System", "b.exe", "A.exe"}));
    EXPECT_EQ(m_list[1].processId, 20U);
}

TEST_F(HostUtility, AnEmptyListIsNotNull)
{
    Processes processes(m_library);
    EXPECT_NE(Ask(), nullptr);
    EXPECT_EQ(m_count, 0U);
}

TEST_F(HostUtility, TakesFiveThousandProcesses)
{
    Processes processes(m_library);
    for (DWORD id = 1; id <= 5000; ++id)
        processes.list.push_back({id, L"process" + std::to_wstring(id) + L".exe"});
    const Names names = AskForNames();
    ASSERT_EQ(names.size(), 5000U);
    EXPECT_EQ(names[0], "process1.exe");
    EXPECT_EQ(names[4999], "process5000.exe");
}

TEST_F(HostUtility, CallsTheIdleProcessIdle)
{
    Processes processes(m_library);
    processes.list = {{0, L"[System Process]"}};
    EXPECT_EQ(AskForNames(), Names{"Idle"});
}

TEST_F(HostUtility, CharactersOutsideTheCodePageBecomeQuestionMarks)
{
    Processes processes(m_library);
    processes.list = {{5, L"\x65E5\x672C.exe"}, {6, L"after.exe"}};
    EXPECT_EQ(AskForNames(), (Names{"??.exe", "after.exe"}));
}

TEST_F(HostUtility, NoCharacterIsReplacedByASimilarOne)
{
    Processes processes(m_library);
    processes.list = {{5, L"\x0100.exe"}}; // A with a macron, which is not to be listed as A
    EXPECT_EQ(AskForNames(), Names{"?.exe"});
}

TEST_F(HostUtility, KeepsLettersOfTheCodePage)
{
    Processes processes(m_library);
    processes.list = {{5, L"b\x00E4r.exe"}};
    EXPECT_EQ(AskForNames(), Names{"b\xE4r.exe"});
}

TEST_F(HostUtility, ANameOf259CharactersIsWhole)
{
    Processes processes(m_library);
    processes.list = {{5, std::wstring(259, L'n')}};
    EXPECT_EQ(AskForNames(), Names{std::string(259, 'n')});
}

TEST_F(HostUtility, CutsALongNameBetweenTwoCharacters)
{
    const support::ReplacedImport convert(m_library, "WideCharToMultiByte", &ConvertToJapanese);
    const support::ReplacedImport leadByte(m_library, "IsDBCSLeadByte", &IsJapaneseLeadByte);
    Processes processes(m_library);
    processes.list = {{5, std::wstring(200, L'\x65E5')}};
    Ask();
    ASSERT_EQ(m_count, 1U);
    EXPECT_EQ(std::strlen(m_list[0].name.data()), 258U);
}

TEST_F(HostUtility, NamesEveryProcessWhereTheCodePageIsUtf8)
{
    const support::ReplacedImport codePage(m_library, "GetACP", &Utf8CodePage);
    const support::ReplacedImport convert(m_library, "WideCharToMultiByte", &ConvertToUtf8);
    Processes processes(m_library);
    processes.list = {{5, L"\x65E5\x672C.exe"}, {6, L"b\x00E4r.exe"}, {7, L"plain.exe"}};
    EXPECT_EQ(AskForNames(), (Names{"\xE6\x97\xA5\xE6\x9C\xAC.exe", "b\xC3\xA4r.exe", "plain.exe"}));
}

TEST_F(HostUtility, CutsALongUtf8NameBetweenTwoCharacters)
{
    const support::ReplacedImport codePage(m_library, "GetACP", &Utf8CodePage);
    const support::ReplacedImport convert(m_library, "WideCharToMultiByte", &ConvertToUtf8);
    Processes processes(m_library);
    const std::wstring threeByteEach(200, L'\x65E5');
    processes.list = {{5, threeByteEach}, {6, L"1" + threeByteEach}, {7, L"12" + threeByteEach}};
    const Names names = AskForNames();
    ASSERT_EQ(names.size(), 3U);
    EXPECT_EQ(names[0].size(), 86U * 3U);
    EXPECT_EQ(names[1].size(), 1U + 86U * 3U);
    EXPECT_EQ(names[2].size(), 2U + 85U * 3U);
}

TEST_F(HostUtility, WithoutASnapshotThereIsNoList)
{
    auto refuse = support::HookImport<decltype(CreateToolhelp32Snapshot)>(
        m_library, "CreateToolhelp32Snapshot", [](auto, DWORD, DWORD) { return INVALID_HANDLE_VALUE; });
    EXPECT_EQ(Ask(), nullptr);
    EXPECT_EQ(m_count, 0U);
}

TEST_F(HostUtility, WithoutMemoryThereIsNoList)
{
    auto refuse = support::HookImport<decltype(calloc)>(
        m_library, "calloc", [](auto, std::size_t, std::size_t) -> void* { return nullptr; });
    EXPECT_EQ(Ask(), nullptr);
    EXPECT_EQ(m_count, 0U);
}

TEST_F(HostUtility, ClosesItsSnapshot)
{
    int open = 0;
    auto take = support::HookImport<decltype(CreateToolhelp32Snapshot)>(
        m_library, "CreateToolhelp32Snapshot", [&](auto original, DWORD flags, DWORD process) {
            ++open;
            return original(flags, process);
        });
    auto close = support::HookImport<decltype(CloseHandle)>(m_library, "CloseHandle",
                                                            [&](auto original, HANDLE handle) {
                                                                --open;
                                                                return original(handle);
                                                            });
    Ask();
    EXPECT_EQ(open, 0);
}

TEST(HostUtilityFile, BearsTheProjectsVersion)
{
    const std::string path = support::BesideThisProgram("..\\..\\..\\vthstutl.dll");
    std::vector<char> block(GetFileVersionInfoSizeA(path.c_str(), nullptr));
    ASSERT_TRUE(GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    void* text = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueA(block.data(), "\\StringFileInfo\\040904B0\\FileVersion", &text, &length));
    EXPECT_STREQ(static_cast<const char*>(text), VTN_TEST_VERSION);
}

} // namespace
