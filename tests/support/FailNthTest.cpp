// The failing of one call, on this program's own calls.
#include "support/FailNth.h"
#include "support/ThisProgram.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace {

using support::thisProgram;

using support::FailNth;

// Apart from the hooks, as the hook's header asks.
[[gnu::noinline]] BOOL RemoveFile(const char* name)
{
    return DeleteFileA(name);
}

[[gnu::noinline]] BOOL RemoveFolder(const char* name)
{
    return RemoveDirectoryA(name);
}

const char absent[] = "no such name";

TEST(FailNth, FailsTheChosenCallOnly)
{
    const FailNth<"DeleteFileA", decltype(DeleteFileA)> fail(thisProgram, 2, FALSE, ERROR_DISK_FULL);
    RemoveFile(&absent[0]);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_FALSE(RemoveFile(&absent[0]));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_DISK_FULL});
    RemoveFile(&absent[0]);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(fail.Calls(), 3);
}

TEST(FailNth, FailsFunctionsOfOneShapeSideBySide)
{
    const FailNth<"DeleteFileA", decltype(DeleteFileA)> file(thisProgram, 1, FALSE, ERROR_DISK_FULL);
    const FailNth<"RemoveDirectoryA", decltype(RemoveDirectoryA)> directory(thisProgram, 1, FALSE,
                                                                            ERROR_SHARING_VIOLATION);
    RemoveFile(&absent[0]);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_DISK_FULL});
    RemoveFolder(&absent[0]);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
}

TEST(FailNth, FailsTheTestWhenTheCallIsNeverMade)
{
    const auto neverCalled = [] {
        const FailNth<"DeleteFileA", decltype(DeleteFileA)> fail(thisProgram, 1, FALSE);
    };
    EXPECT_NONFATAL_FAILURE(neverCalled(), "DeleteFileA was called 0 times");
}

TEST(FailNth, RefusesAFunctionThatIsNotImported)
{
    const auto failNothing = [] { const FailNth<"NoSuchFunction", BOOL()> fail(thisProgram, 1, FALSE); };
    EXPECT_THROW(failNothing(), std::runtime_error);
}

} // namespace
