// Updates of the login script that fail: what is reported, and what is left of the script.
#include "desktop/core/LoginScript.h"

#include "ScriptTexts.h"
#include "support/FailNth.h"
#include "support/FakeClock.h"
#include "support/SystemFunction.h"
#include "support/TestDirectory.h"
#include "support/ThisProgram.h"
#include "sysaccess/core/ConfigurationError.h"

#include <gtest/gtest.h>
#include <optional>
#include <utility>
#include <vector>

namespace {

using support::FileExists;
using support::ReadBytes;
using support::WriteBytes;
using Script = std::optional<std::string>; // nothing: there is no such file

using support::thisProgram;

using FailOpen = support::FailNth<"CreateFileA", decltype(CreateFileA)>;
using FailWrite = support::FailNth<"WriteFile", decltype(WriteFile)>;

// Whatever else there is in the program, the engine alone makes copies of texts so: one for each line of a
// file, and one for the list's end.
using FailLine = support::FailNth<"_strdup", char*(const char*)>;

HANDLE Open(const std::string& path, DWORD share)
{
    static auto* const open = support::SystemFunction<decltype(CreateFileA)>("kernel32", "CreateFileA");
    return open(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr);
}

// Somebody who reads the script for the life of this object, and shares it with others as `share` says.
class Holder
{
  public:
    Holder(const std::string& path, DWORD share) : m_file(Open(path, share)) {}
    ~Holder() { CloseHandle(m_file); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

  private:
    HANDLE m_file;
};

class LoginScriptFailure : public testing::Test
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

    // Neither switching on nor switching off changes the script, and both report it.
    void ExpectLeftAlone(support::Location where = support::Location::current())
    {
        const Script before = ReadBytes(m_path);
        for (const bool isOn : {true, false}) {
            ExpectUpdateFails(isOn, where);
            support::ExpectEqual(before, ReadBytes(m_path), "script", where);
        }
    }

    support::TestDirectory m_directory;
    std::string m_path = m_directory.File("LOGIN.BAT");
};

// --- scripts that nobody may change

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

TEST_F(LoginScriptFailure, OfAReadOnlyScriptChangesNothing)
{
    WriteBytes(m_path, block + house);
    SetFileAttributesA(m_path.c_str(), FILE_ATTRIBUTE_READONLY);
    const support::ReplacedImport open(thisProgram, "CreateFileA", &OpenAsWindowsDoes);
    ExpectLeftAlone();
    EXPECT_NE(GetFileAttributesA(m_path.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
}

TEST_F(LoginScriptFailure, OfAScriptInUseChangesNothing)
{
    WriteBytes(m_path, block + house);
    for (const DWORD share :
         std::vector<DWORD>{0, FILE_SHARE_READ, FILE_SHARE_DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE})
    {
        const Holder holder(m_path, share);
        ExpectUpdateFails(true);
        ExpectUpdateFails(false);
    }
    EXPECT_EQ(ReadBytes(m_path), block + house);
}

TEST_F(LoginScriptFailure, OfADirectoryOfThatNameLeavesIt)
{
    CreateDirectoryA(m_path.c_str(), nullptr);
    ExpectUpdateFails(true);
    ExpectUpdateFails(false);
    EXPECT_TRUE(FileExists(m_path));
}

TEST_F(LoginScriptFailure, OfAMissingDirectoryMakesNone)
{
    m_path = m_directory.File("absent\\LOGIN.BAT");
    ExpectLeftAlone();
    EXPECT_FALSE(FileExists(m_directory.File("absent")));
}

TEST_F(LoginScriptFailure, OfAPathThatIsTooLongIsReported)
{
    m_path = m_directory.File(std::string(700, 'a') + ".BAT");
    ExpectLeftAlone();
}

TEST(LoginScriptInUse, IsUpdatedWhileItsReaderLetsOthersWrite)
{
    const support::TestDirectory directory;
    const std::string path = directory.File("LOGIN.BAT");
    WriteBytes(path, house);
    const Holder holder(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
    UpdateLoginScript(path, "SRV1", true);
    EXPECT_EQ(ReadBytes(path), block + house);
}

TEST(LoginScriptInUse, IsLeftEmptyWhereItWouldBeDeleted)
{
    const support::TestDirectory directory;
    const std::string path = directory.File("LOGIN.BAT");
    WriteBytes(path, block);
    const Holder holder(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
    UpdateLoginScript(path, "SRV1", false);
    EXPECT_EQ(ReadBytes(path), "");
}

// --- files that let the update down half way; a script that was written half way is worse than none, so the
// engine deletes it

// The script is opened for reading and for writing, first to take the block out and then to put it in.
TEST_F(LoginScriptFailure, OfAnyOpeningKeepsTheSavedScript)
{
    const Script left[] = {block + house, std::nullopt, house, std::nullopt};
    for (int opening = 1; opening <= 4; ++opening) {
        WriteBytes(m_path, block + house);
        const FailOpen fail(thisProgram, opening, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
        ExpectUpdateFails(true);
        EXPECT_EQ(fail.Calls(), opening);
        EXPECT_EQ(ReadBytes(m_path), left[opening - 1]) << opening;
    }
}

TEST_F(LoginScriptFailure, OfAWriteIsReported)
{
    for (const int write : {1, 2}) {
        WriteBytes(m_path, house);
        const FailWrite fail(thisProgram, write, FALSE, ERROR_DISK_FULL);
        ExpectUpdateFails(true);
        EXPECT_FALSE(FileExists(m_path));
    }
}

// Opens the script for somebody else just before the update opens it for the first time to write it.
class LockedMeanwhile : public LoginScriptFailure
{
  protected:
    LockedMeanwhile() { s_hasHeld = false; }

    static HANDLE WINAPI OpenBehindAnother(LPCSTR path, DWORD access, DWORD share,
                                           LPSECURITY_ATTRIBUTES security, DWORD disposition,
                                           DWORD attributes, HANDLE pattern)
    {
        static auto* const open = support::SystemFunction<decltype(CreateFileA)>("kernel32", "CreateFileA");
        if (disposition == OPEN_EXISTING && !std::exchange(s_hasHeld, true))
            s_holder.emplace(path, s_share);
        return open(path, access, share, security, disposition, attributes, pattern);
    }

    // What is left of the script, after everybody has let go of it.
    Script UpdateBehind(DWORD share)
    {
        s_share = share;
        WriteBytes(m_path, house);
        ExpectUpdateFails(true);
        s_holder.reset();
        return ReadBytes(m_path);
    }

    static inline bool s_hasHeld = false;
    static inline DWORD s_share = 0;
    static inline std::optional<Holder> s_holder;
    support::FakeClock m_clock{thisProgram};
    support::ReplacedImport m_open{thisProgram, "CreateFileA", &OpenBehindAnother};
};

TEST_F(LockedMeanwhile, TheScriptStaysAsItWas)
{
    EXPECT_EQ(UpdateBehind(FILE_SHARE_READ), house);
}

TEST_F(LockedMeanwhile, TheScriptIsUpdatedOnceItIsReleased)
{
    s_share = FILE_SHARE_READ | FILE_SHARE_DELETE;
    WriteBytes(m_path, house);
    bool isReleased = false;
    m_clock.OnSleep([&](DWORD) {
        s_holder.reset();
        isReleased = true;
    });
    UpdateLoginScript(m_path, "SRV1", true);
    EXPECT_TRUE(isReleased);
    EXPECT_EQ(ReadBytes(m_path), block + house);
}

TEST_F(LockedMeanwhile, TheScriptIsGoneIfItMayBeDeleted)
{
    EXPECT_EQ(UpdateBehind(FILE_SHARE_READ | FILE_SHARE_DELETE), std::nullopt);
}

// --- insertions that fail: what was inserted so far is saved without a word, and the next update makes up
// for it

TEST_F(LoginScriptFailure, OfAnInsertionIsRepairedByTheNextUpdate)
{
    constexpr int linesRead = 2 * (1 + 4); // twice the list's end and the lines of the house script
    const std::string partial[] = {house, endLine + house, callLine + endLine + house};
    for (int insertion = 0; insertion < 3; ++insertion) {
        WriteBytes(m_path, house);
        {
            const FailLine fail(thisProgram, linesRead + insertion + 1, nullptr);
            UpdateLoginScript(m_path, "SRV1", true);
        }
        EXPECT_EQ(ReadBytes(m_path), partial[insertion]);
        UpdateLoginScript(m_path, "SRV1", true);
        EXPECT_EQ(ReadBytes(m_path), block + house);
    }
}

TEST_F(LoginScriptFailure, OfTheFirstInsertionIntoNoScriptLeavesNone)
{
    {
        const FailLine fail(thisProgram, 3, nullptr); // behind two lists' ends
        UpdateLoginScript(m_path, "SRV1", true);
    }
    EXPECT_FALSE(FileExists(m_path));
    UpdateLoginScript(m_path, "SRV1", true);
    EXPECT_EQ(ReadBytes(m_path), block);
}

} // namespace
