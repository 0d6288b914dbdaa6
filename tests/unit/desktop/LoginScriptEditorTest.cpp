// An update of the login script while an editor has it open, with any access and any sharing, from any of the
// four times on that the update opens it: the removal of the block, its saving, the insertion, and its
// saving.
#include "desktop/core/LoginScript.h"

#include "imports/ImportHook.h"
#include "ScriptTexts.h"
#include "support/FakeClock.h"
#include "support/SystemFunction.h"
#include "support/TestDirectory.h"
#include "support/ThisProgram.h"
#include "sysaccess/core/ConfigurationError.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <optional>
#include <set>

namespace {

using support::thisProgram;

constexpr DWORD accesses[] = {GENERIC_READ, GENERIC_WRITE, GENERIC_READ | GENERIC_WRITE, DELETE,
                              GENERIC_READ | GENERIC_WRITE | DELETE};
constexpr DWORD anySharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Opens the script just before the update does so for the `opening`-th time, and holds it.
class Editor
{
  public:
    Editor(const std::string& path, int opening, DWORD access, DWORD sharing)
        : m_path(path), m_opening(opening), m_access(access), m_sharing(sharing)
    {
    }
    ~Editor()
    {
        if (m_file != INVALID_HANDLE_VALUE)
            CloseHandle(m_file);
    }
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    void BeforeOpening()
    {
        static auto* const open =
            support::SystemFunction<decltype(CreateFileA)>("kernel32.dll", "CreateFileA");
        if (++m_count == m_opening)
            m_file = open(m_path.c_str(), m_access, m_sharing, nullptr, OPEN_EXISTING, 0, nullptr);
    }
    [[nodiscard]] bool HasOpened() const { return m_file != INVALID_HANDLE_VALUE; }

  private:
    std::string m_path;
    int m_opening;
    DWORD m_access;
    DWORD m_sharing;
    int m_count = 0;
    HANDLE m_file = INVALID_HANDLE_VALUE;
};

// Whether the update succeeds.
bool Update(const std::string& path, Editor& editor)
{
    support::FakeClock clock(thisProgram);
    const auto watch = support::HookImport<decltype(CreateFileA)>(thisProgram, "CreateFileA",
                                                                  [&](auto original, auto... arguments) {
                                                                      editor.BeforeOpening();
                                                                      return original(arguments...);
                                                                  });
    try {
        UpdateLoginScript(path, "SRV1", true);
        return true;
    } catch (ConfigurationError) {
        return false;
    }
}

// Old or new as a whole, or, after a message, gone where the editor lets others delete.
void Check(int opening, DWORD access, DWORD sharing, bool isDone, const std::optional<std::string>& left)
{
    SCOPED_TRACE("opening " + std::to_string(opening) + ", access " + std::to_string(access) + ", sharing " +
                 std::to_string(sharing));
    if (isDone) {
        EXPECT_EQ(left, block + house);
        return;
    }
    const bool isSaving = opening == 2 || opening == 4;
    if (!left.has_value())
        EXPECT_TRUE(isSaving && (sharing & FILE_SHARE_DELETE) != 0) << "the script is gone";
    else
        EXPECT_TRUE(left == oldBlock + house || left == house) << *left;
}

TEST(LoginScriptEditor, LeavesTheScriptOldOrNewOrWithAMessageGone)
{
    const support::TestDirectory directory;
    const std::string path = directory.File("LOGIN.BAT");
    int cases = 0;
    int refused = 0;
    int gone = 0;
    for (int opening = 1; opening <= 4; ++opening) {
        for (const DWORD access : accesses) {
            for (DWORD sharing = 0; sharing <= anySharing; ++sharing) {
                DeleteFileA(path.c_str());
                support::WriteBytes(path, oldBlock + house);
                bool isDone = false;
                {
                    Editor editor(path, opening, access, sharing);
                    isDone = Update(path, editor);
                    EXPECT_TRUE(editor.HasOpened());
                }
                const std::optional<std::string> left = support::ReadBytes(path);
                Check(opening, access, sharing, isDone, left);
                ++cases;
                refused += isDone ? 0 : 1;
                gone += left.has_value() ? 0 : 1;
            }
        }
    }
    std::printf("%d cases: %d updates refused, %d scripts gone\n", cases, refused, gone);
}

} // namespace
