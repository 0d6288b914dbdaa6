// What is left of the login script when the process ends in the middle of an update: a script that clients
// can run.
#include "desktop/core/LoginScript.h"

#include "imports/ImportHook.h"
#include "ScriptTexts.h"
#include "support/TestDirectory.h"
#include "support/ThisProgram.h"
#include "sysaccess/core/ConfigurationError.h"

#include <gtest/gtest.h>

namespace {

using support::thisProgram;

// Lets a number of calls pass; from then on nothing reaches the disk.
class ProcessEnd
{
  public:
    explicit ProcessEnd(int calls) : m_remaining(calls) {}

    // Whether it comes before this call.
    bool IsBefore()
    {
        m_hasCome = m_remaining == 0;
        if (m_hasCome)
            SetLastError(ERROR_GEN_FAILURE);
        else
            --m_remaining;
        return m_hasCome;
    }
    [[nodiscard]] bool HasCome() const { return m_hasCome; }

  private:
    int m_remaining;
    bool m_hasCome = false;
};

// A macro, since each hook needs a lambda expression of its own.
#define END_BEFORE(end, function, failure)                                                                   \
    support::HookImport<decltype(function)>(                                                                 \
        thisProgram, #function, [&end](auto original, auto... arguments) {                                   \
            return end.IsBefore() ? decltype(original(arguments...))(failure) : original(arguments...);      \
        })

// Updates the script and ends after so many calls that reach the file.
void UpdateUpTo(ProcessEnd& end, const std::string& path, bool isOn)
{
    const auto open = END_BEFORE(end, CreateFileA, INVALID_HANDLE_VALUE);
    const auto read = END_BEFORE(end, ReadFile, FALSE);
    const auto write = END_BEFORE(end, WriteFile, FALSE);
    const auto move = END_BEFORE(end, SetFilePointer, INVALID_SET_FILE_POINTER);
    const auto cut = END_BEFORE(end, SetEndOfFile, FALSE);
    const auto remove = END_BEFORE(end, DeleteFileA, FALSE);
    try {
        UpdateLoginScript(path, "SRV1", isOn);
    } catch (ConfigurationError) {
        EXPECT_TRUE(end.HasCome());
    }
}

// A script of some pages.
std::string LongScript()
{
    std::string script = house;
    for (int i = 0; i < 3000; ++i)
        script += "if exist share" + std::to_string(i) + " goto next\r\n";
    return script;
}

std::string WithoutLineEndsBelow(std::string text)
{
    return text.erase(text.find_last_not_of("\r\n") + 1);
}

TEST(LoginScriptEnd, LeavesTheWholeBlockOrNone)
{
    const std::string script = LongScript();
    const support::TestDirectory directory;
    const std::string path = directory.File("LOGIN.BAT");
    for (const bool isOn : {true, false}) {
        for (const std::string& before : {script, block + script, oldBlock + script}) {
            bool isOver = false;
            for (int calls = 0; !isOver; ++calls) {
                support::WriteBytes(path, before);
                ProcessEnd end(calls);
                UpdateUpTo(end, path, isOn);
                isOver = !end.HasCome();
                const std::string left = WithoutLineEndsBelow(support::ReadBytes(path).value_or("gone"));
                const bool isWhole = left == WithoutLineEndsBelow(before) ||
                                     left == WithoutLineEndsBelow(script) ||
                                     left == WithoutLineEndsBelow(block + script);
                EXPECT_TRUE(isWhole) << left.size() << " bytes after " << calls << " calls";
            }
        }
    }
}

} // namespace
