// What a login script may be, and which machine it calls.
#include "desktop/core/LoginScript.h"

#include "ScriptTexts.h"
#include "support/FailNth.h"
#include "support/TestDirectory.h"
#include "support/ThisProgram.h"

#include <gtest/gtest.h>

namespace {

using support::FileExists;
using support::ReadBytes;
using support::WriteBytes;

using support::thisProgram;

using FailOpen = support::FailNth<"CreateFileA", decltype(CreateFileA)>;

class LoginScript : public testing::Test
{
  protected:
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

// --- what is written

TEST_F(LoginScriptUpdate, SwitchingOffWithoutAScriptLeavesNoFileBehind)
{
    UpdateLoginScript(m_path, "SRV1", false);
    EXPECT_FALSE(FileExists(m_path));
}

TEST_F(LoginScriptUpdate, CallsTheClientFromTheMachinesShare)
{
    UpdateLoginScript(m_path, "PRIMARY", true);
    EXPECT_EQ(ReadBytes(m_path),
              beginLine + "\\\\PRIMARY\\netlogon\\vtnclnt \\\\PRIMARY\\netlogon\r\n" + endLine);
}

// --- whether a path can be a login script

TEST_F(LoginScriptUse, AcceptsAnExistingBatchFile)
{
    WriteBytes(m_path, house);
    EXPECT_TRUE(IsUsableLoginScript(m_path));
    EXPECT_EQ(ReadBytes(m_path), house);
}

TEST_F(LoginScriptUse, AcceptsAMissingBatchFileAndLeavesNone)
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
    const FailOpen deny(thisProgram, 1, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
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
