// What a login script may be, and what becomes of one that cannot be updated.
#include "desktop/LoginScript.h"

#include "ScriptTexts.h"
#include "support/FailNth.h"
#include "support/SystemFunction.h"
#include "support/TestDirectory.h"
#include "sysaccess/ConfigurationError.h"

#include <gtest/gtest.h>

namespace {

using support::FileExists;
using support::ReadBytes;
using support::WriteBytes;

const HMODULE self = GetModuleHandleA(nullptr);

using FailOpen = support::FailNth<"CreateFileA", decltype(CreateFileA)>;
using FailWrite = support::FailNth<"WriteFile", decltype(WriteFile)>;

class LoginScript : public testing::Test
{
  protected:
    void ExpectUpdateFails(bool isOn, support::Location where = support::Location::current())
    {
        try {
            UpdateLoginScript(m_path, "SRV1", isOn);
            support::ReportFailure(where, "nothing was thrown");
        } catch (ConfigurationError error) {
            support::ExpectEqual(IDS_SCRIPT_UPDATE_FAILED, error, "error", where);
        }
    }

    support::TestDirectory m_directory;
    std::string m_path = m_directory.File("LOGIN.BAT");
};

using LoginScriptUpdate = LoginScript;
using LoginScriptUse = LoginScript;

// --- which files are batch files

TEST(BatchFile, EndsInBatInAnyLetterCase)
{
    EXPECT_TRUE(IsBatchFile("C:\\scripts\\LOGIN.BAT"));
    EXPECT_TRUE(IsBatchFile("login.bat"));
    EXPECT_TRUE(IsBatchFile(".Bat"));
}

TEST(BatchFile, IsNothingElse)
{
    for (const char* path : {"", "BAT", "C:\\LOGIN.CMD", "LOGIN.BAT.txt", "LOGIN.BAT ", "LOGIN_BAT"})
        EXPECT_FALSE(IsBatchFile(path)) << path;
}

// --- updates that fail

// Some systems let their administrator write to read-only files; Windows does not.
HANDLE WINAPI OpenAsWindowsDoes(LPCSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                                DWORD disposition, DWORD attributes, HANDLE pattern)
{
    static auto* const open = support::SystemFunction<decltype(CreateFileA)>("kernel32", "CreateFileA");
    const DWORD found = GetFileAttributesA(path);
    const bool isReadOnly = found != INVALID_FILE_ATTRIBUTES && (found & FILE_ATTRIBUTE_READONLY) != 0;
    if (!isReadOnly || (access & GENERIC_WRITE) == 0)
        return open(path, access, share, security, disposition, attributes, pattern);
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
}

TEST_F(LoginScriptUpdate, AReadOnlyScriptIsRefusedAndLeftAsItIs)
{
    WriteBytes(m_path, house);
    SetFileAttributesA(m_path.c_str(), FILE_ATTRIBUTE_READONLY);
    const support::ReplacedImport open(self, "CreateFileA", &OpenAsWindowsDoes);
    ExpectUpdateFails(true);
    EXPECT_EQ(ReadBytes(m_path), house);
    EXPECT_NE(GetFileAttributesA(m_path.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
}

TEST_F(LoginScriptUpdate, AScriptThatAnotherProgramHasLockedIsRefusedAndLeftAsItIs)
{
    WriteBytes(m_path, house);
    const HANDLE lock =
        CreateFileA(m_path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ExpectUpdateFails(true);
    CloseHandle(lock);
    EXPECT_EQ(ReadBytes(m_path), house);
}

TEST_F(LoginScriptUpdate, ADirectoryOfThatNameIsRefused)
{
    CreateDirectoryA(m_path.c_str(), nullptr);
    ExpectUpdateFails(true);
    EXPECT_TRUE(FileExists(m_path));
}

TEST_F(LoginScriptUpdate, AMissingDirectoryIsRefused)
{
    m_path = m_directory.File("absent\\LOGIN.BAT");
    ExpectUpdateFails(true);
    ExpectUpdateFails(false);
}

TEST_F(LoginScriptUpdate, APathThatIsTooLongIsRefused)
{
    m_path = m_directory.File(std::string(700, 'a') + ".BAT");
    ExpectUpdateFails(true);
}

// Opened for reading and for writing, first to take the block out and then to put it in.
TEST_F(LoginScriptUpdate, AFailureToOpenTheScriptLeavesItAsItIs)
{
    WriteBytes(m_path, block + house);
    {
        const FailOpen fail(self, 1, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
        ExpectUpdateFails(true);
    }
    EXPECT_EQ(ReadBytes(m_path), block + house);
}

TEST_F(LoginScriptUpdate, AFailureToOpenTheScriptAgainKeepsTheRemoval)
{
    WriteBytes(m_path, block + house);
    {
        const FailOpen fail(self, 3, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
        ExpectUpdateFails(true);
    }
    EXPECT_EQ(ReadBytes(m_path), house);
}

// A script that was written half way is worse than none: the engine deletes it.
TEST_F(LoginScriptUpdate, AFailedWriteIsTold)
{
    for (const int write : {1, 2}) {
        WriteBytes(m_path, house);
        const FailWrite fail(self, write, FALSE, ERROR_DISK_FULL);
        ExpectUpdateFails(true);
        EXPECT_FALSE(FileExists(m_path));
    }
}

TEST_F(LoginScriptUpdate, SwitchingOffWithoutAScriptLeavesNoFileBehind)
{
    UpdateLoginScript(m_path, "SRV1", false);
    EXPECT_FALSE(FileExists(m_path));
}

TEST_F(LoginScriptUpdate, CallsTheClientFromTheShareOfTheNamedMachine)
{
    UpdateLoginScript(m_path, "PRIMARY", true);
    EXPECT_EQ(ReadBytes(m_path),
              beginLine + "\\\\PRIMARY\\netlogon\\vtnclnt \\\\PRIMARY\\netlogon\r\n" + endLine);
}

// --- whether a path can be a login script

TEST_F(LoginScriptUse, TakesABatchFileThatIsThereAndLeavesItAlone)
{
    WriteBytes(m_path, house);
    EXPECT_TRUE(IsUsableLoginScript(m_path));
    EXPECT_EQ(ReadBytes(m_path), house);
}

TEST_F(LoginScriptUse, TakesABatchFileThatIsNotThereAndLeavesNoneBehind)
{
    EXPECT_TRUE(IsUsableLoginScript(m_path));
    EXPECT_FALSE(FileExists(m_path));
}

TEST_F(LoginScriptUse, TakesAnEmptyBatchFileAndKeepsIt)
{
    WriteBytes(m_path, "");
    EXPECT_TRUE(IsUsableLoginScript(m_path));
    EXPECT_TRUE(FileExists(m_path));
}

TEST_F(LoginScriptUse, TakesAReadOnlyBatchFile)
{
    WriteBytes(m_path, house);
    SetFileAttributesA(m_path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(IsUsableLoginScript(m_path));
}

TEST_F(LoginScriptUse, TakesABatchFileThatOthersAreWriting)
{
    WriteBytes(m_path, house);
    const HANDLE writer = CreateFileA(m_path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(IsUsableLoginScript(m_path));
    CloseHandle(writer);
}

TEST_F(LoginScriptUse, TakesPathsWithSpacesAndDoubleByteCharacters)
{
    const std::string path = m_directory.File("log on \x93\xFA\x96\x7B.bat");
    EXPECT_TRUE(IsUsableLoginScript(path));
    EXPECT_FALSE(FileExists(path));
}

TEST_F(LoginScriptUse, RefusesOtherKindsOfFilesWithoutTouchingThem)
{
    EXPECT_FALSE(IsUsableLoginScript(m_directory.File("LOGIN.txt")));
    EXPECT_FALSE(FileExists(m_directory.File("LOGIN.txt")));
    EXPECT_FALSE(IsUsableLoginScript(""));
}

TEST_F(LoginScriptUse, RefusesADirectory)
{
    CreateDirectoryA(m_path.c_str(), nullptr);
    EXPECT_FALSE(IsUsableLoginScript(m_path));
    EXPECT_TRUE(FileExists(m_path));
}

TEST_F(LoginScriptUse, RefusesAMissingDirectory)
{
    EXPECT_FALSE(IsUsableLoginScript(m_directory.File("absent\\LOGIN.BAT")));
}

TEST_F(LoginScriptUse, RefusesADirectoryThatTakesNoFiles)
{
    const FailOpen deny(self, 1, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
    EXPECT_FALSE(IsUsableLoginScript(m_path));
}

TEST_F(LoginScriptUse, RefusesAFileThatNobodyMayRead)
{
    WriteBytes(m_path, house);
    const HANDLE lock = CreateFileA(m_path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(IsUsableLoginScript(m_path));
    CloseHandle(lock);
    EXPECT_EQ(ReadBytes(m_path), house);
}

} // namespace
