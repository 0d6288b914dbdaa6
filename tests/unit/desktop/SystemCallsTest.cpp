// What desktop management and its tests count on in Windows' calls. On Windows these tests say what is so;
// natively they keep the stand-in to it.
#include "support/TestDirectory.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <vector>

// It needs windows.h before it.
#include <lm.h>

namespace {

using support::FileExists;
using support::ReadBytes;
using support::TestDirectory;
using support::WriteBytes;

class SystemCall : public testing::Test
{
  protected:
    [[nodiscard]] std::string File(const std::string& name) const { return m_directory.File(name); }

  private:
    TestDirectory m_directory;
};

using SystemDirectory = SystemCall;
using SystemCopy = SystemCall;
using SystemProfile = SystemCall;

// --- directories

TEST_F(SystemDirectory, IsMadeOnce)
{
    EXPECT_TRUE(CreateDirectoryA(File("sub").c_str(), nullptr));
    EXPECT_FALSE(CreateDirectoryA(File("sub").c_str(), nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(GetFileAttributesA(File("sub").c_str()) & FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_DIRECTORY);
}

TEST_F(SystemDirectory, IsNotMadeBelowAMissingOne)
{
    EXPECT_FALSE(CreateDirectoryA(File("missing\\sub").c_str(), nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST_F(SystemDirectory, IsRemovedWhenItIsEmpty)
{
    CreateDirectoryA(File("sub").c_str(), nullptr);
    WriteBytes(File("sub\\file"), "");
    EXPECT_FALSE(RemoveDirectoryA(File("sub").c_str()));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_DIR_NOT_EMPTY});
    DeleteFileA(File("sub\\file").c_str());
    EXPECT_TRUE(RemoveDirectoryA(File("sub").c_str()));
    EXPECT_FALSE(FileExists(File("sub")));
}

TEST_F(SystemDirectory, IsSearchedForEverythingInIt)
{
    WriteBytes(File("a"), "");
    CreateDirectoryA(File("b").c_str(), nullptr);
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry{};
    const HANDLE search = FindFirstFileA(File("*").c_str(), &entry);
    do {
        const bool isDirectory = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        names.push_back(&entry.cFileName[0] + std::string(isDirectory ? "\\" : ""));
    } while (FindNextFileA(search, &entry));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_NO_MORE_FILES});
    EXPECT_TRUE(FindClose(search));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"..\\", ".\\", "a", "b\\"}));
    EXPECT_EQ(FindFirstFileA(File("missing\\*").c_str(), &entry), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST(SystemNetwork, HasDirectoriesAndFilesOfOtherMachines)
{
    const support::NetworkDirectory network("share");
    EXPECT_TRUE(CreateDirectoryA(network.File("sub").c_str(), nullptr));
    WriteBytes(network.File("sub\\file"), "text");
    EXPECT_TRUE(CopyFileA(network.File("sub\\file").c_str(), network.File("copy").c_str(), TRUE));
    EXPECT_EQ(ReadBytes(network.File("copy")), "text");
    EXPECT_FALSE(FileExists(network.File("absent")));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
}

// --- copies

TEST_F(SystemCopy, HasTheBytesOfItsOriginal)
{
    WriteBytes(File("from"), std::string(10000, 'x'));
    WriteBytes(File("to"), "old");
    EXPECT_TRUE(CopyFileA(File("from").c_str(), File("to").c_str(), FALSE));
    EXPECT_EQ(ReadBytes(File("to")), std::string(10000, 'x'));
}

TEST_F(SystemCopy, MayBeForbiddenToReplaceAFile)
{
    WriteBytes(File("from"), "new");
    WriteBytes(File("to"), "old");
    EXPECT_FALSE(CopyFileA(File("from").c_str(), File("to").c_str(), TRUE));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_EXISTS});
    EXPECT_EQ(ReadBytes(File("to")), "old");
}

TEST_F(SystemCopy, FailsForWhatIsMissingOrHeld)
{
    EXPECT_FALSE(CopyFileA(File("missing").c_str(), File("to").c_str(), FALSE));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    WriteBytes(File("from"), "new");
    EXPECT_FALSE(CopyFileA(File("from").c_str(), File("missing\\to").c_str(), FALSE));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
    WriteBytes(File("to"), "old");
    const HANDLE held =
        CreateFileA(File("to").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(CopyFileA(File("from").c_str(), File("to").c_str(), FALSE));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
    CloseHandle(held);
}

// --- profiles

std::string Setting(const std::string& path, const char* section, const char* key)
{
    std::array<char, 32> value{};
    const DWORD length =
        GetPrivateProfileStringA(section, key, "(none)", value.data(), value.size(), path.c_str());
    return std::string(value.data(), length);
}

TEST_F(SystemProfile, IsMadeByTheFirstSetting)
{
    EXPECT_TRUE(WritePrivateProfileStringA("Options", "Key", "value", File("a.ini").c_str()));
    EXPECT_EQ(ReadBytes(File("a.ini")), "[Options]\r\nKey=value\r\n");
}

TEST_F(SystemProfile, KeepsItsOtherLines)
{
    const std::string path = File("a.ini");
    WriteBytes(path, "[A]\r\nx=1\r\n[B]\r\ny=2\r\nz=3\r\n");
    EXPECT_TRUE(WritePrivateProfileStringA("b", "Y", "4", path.c_str()));
    EXPECT_TRUE(WritePrivateProfileStringA("A", "w", "5", path.c_str()));
    EXPECT_TRUE(WritePrivateProfileStringA("B", "z", nullptr, path.c_str()));
    EXPECT_EQ(Setting(path, "B", "y"), "4");
    EXPECT_EQ(Setting(path, "A", "x"), "1");
    EXPECT_EQ(Setting(path, "A", "w"), "5");
    EXPECT_EQ(Setting(path, "B", "z"), "(none)");
}

TEST_F(SystemProfile, KeepsASectionWithoutSettings)
{
    WriteBytes(File("a.ini"), "[Options]\r\nKey=value\r\n");
    EXPECT_TRUE(WritePrivateProfileStringA("Options", "Key", nullptr, File("a.ini").c_str()));
    EXPECT_EQ(ReadBytes(File("a.ini")), "[Options]\r\n");
}

TEST_F(SystemProfile, IsReadWithoutBlanksAroundValues)
{
    WriteBytes(File("a.ini"), "[ A ]\r\n x = 12 \r\n[B]\r\ny=text\r\n");
    EXPECT_EQ(Setting(File("a.ini"), "A", "X"), "12");
    EXPECT_EQ(Setting(File("a.ini"), "A", "y"), "(none)");
    EXPECT_EQ(Setting(File("a.ini"), "C", "y"), "(none)");
    EXPECT_EQ(GetPrivateProfileIntA("A", "x", 7, File("a.ini").c_str()), 12U);
    EXPECT_EQ(GetPrivateProfileIntA("A", "z", 7, File("a.ini").c_str()), 7U);
}

TEST_F(SystemProfile, IsNotMadeInAMissingDirectory)
{
    EXPECT_FALSE(WritePrivateProfileStringA("Options", "Key", "value", File("missing\\a.ini").c_str()));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

// --- texts, variables and the machine

TEST(SystemText, IsConvertedWithItsZeroIntoRoomThatSuffices)
{
    std::array<wchar_t, 4> wide{};
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", -1, nullptr, 0), 4);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", -1, wide.data(), 4), 4);
    EXPECT_EQ(std::wstring(wide.data()), L"abc");
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", -1, wide.data(), 3), 0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    std::array<char, 4> narrow{};
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"abc", -1, nullptr, 0, nullptr, nullptr), 4);
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"abc", -1, narrow.data(), 4, nullptr, nullptr), 4);
    EXPECT_STREQ(narrow.data(), "abc");
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"abc", -1, narrow.data(), 3, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

TEST(SystemVariable, IsReturnedWithItsLengthOrSize)
{
    const support::SavedVariable variable("VTN_TEST_VARIABLE", "value");
    std::array<char, 6> value{};
    EXPECT_EQ(GetEnvironmentVariableA("VTN_TEST_VARIABLE", value.data(), 6), 5U);
    EXPECT_STREQ(value.data(), "value");
    EXPECT_EQ(GetEnvironmentVariableA("VTN_TEST_VARIABLE", value.data(), 5), 6U);
    EXPECT_EQ(GetEnvironmentVariableA("VTN_TEST_ABSENT", value.data(), 6), 0U);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ENVVAR_NOT_FOUND});
}

TEST(SystemMachine, HasANameOfAtMostFifteenCharacters)
{
    std::array<char, MAX_COMPUTERNAME_LENGTH + 1> name{};
    DWORD size = name.size();
    EXPECT_TRUE(GetComputerNameA(name.data(), &size));
    EXPECT_EQ(std::string(name.data()).size(), size);
    EXPECT_GT(size, 0U);
    const DWORD length = size;
    EXPECT_FALSE(GetComputerNameA(name.data(), &size)); // no room for the zero
    EXPECT_EQ(size, length + 1);
}

TEST(SystemMachine, ReturnsItsVersionInASizedRecord)
{
    OSVERSIONINFOA version{};
    EXPECT_FALSE(GetVersionExA(&version));
    version.dwOSVersionInfoSize = sizeof version;
    EXPECT_TRUE(GetVersionExA(&version));
    EXPECT_GE(version.dwMajorVersion, 6U);
}

TEST(SystemMachine, ReportsAMissingShare)
{
    wchar_t name[] = L"VTN_TEST_ABSENT";
    BYTE* buffer = nullptr;
    EXPECT_EQ(NetShareGetInfo(nullptr, &name[0], 2, &buffer), NET_API_STATUS{NERR_NetNameNotFound});
    EXPECT_EQ(buffer, nullptr);
}

TEST(SystemMachine, LacksALibraryThatNobodyInstalled)
{
    EXPECT_EQ(LoadLibraryA("vtn_test_absent.dll"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
    EXPECT_EQ(GetProcAddress(GetModuleHandleA("kernel32.dll"), "VtnTestAbsent"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});
}

TEST(SystemMachine, KeepsOneDirectoryForLibraries)
{
    EXPECT_EQ(GetDllDirectoryA(0, nullptr), 1U);
    EXPECT_TRUE(SetDllDirectoryA("C:\\lib"));
    char directory[8] = "";
    EXPECT_EQ(GetDllDirectoryA(6, &directory[0]), 7U);
    EXPECT_EQ(GetDllDirectoryA(7, &directory[0]), 6U);
    EXPECT_STREQ(&directory[0], "C:\\lib");
    EXPECT_TRUE(SetDllDirectoryA(nullptr));
    EXPECT_EQ(GetDllDirectoryA(7, &directory[0]), 0U);
}

} // namespace
