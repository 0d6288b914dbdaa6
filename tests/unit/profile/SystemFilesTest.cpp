// What the profile engine counts on in Windows' file calls. On Windows these tests say what is so; natively
// they keep the stand-in to it.
#include "ProfileFixture.h"

#include <io.h>
#include <sys/stat.h>
#include <windows.h>

namespace {

using profile::ScratchFile;

constexpr DWORD readWrite = GENERIC_READ | GENERIC_WRITE;

HANDLE Open(const char* path, DWORD access, DWORD share, DWORD disposition)
{
    return CreateFileA(path, access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Tries to open the file and returns the error, 0 for success.
DWORD OpenError(const char* path, DWORD access, DWORD share, DWORD disposition)
{
    const HANDLE file = Open(path, access, share, disposition);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError();
    CloseHandle(file);
    return ERROR_SUCCESS;
}

TEST(SystemFiles, DistinguishAMissingFileFromAMissingDirectory)
{
    const ScratchFile file;
    EXPECT_EQ(OpenError(file.Path(), GENERIC_READ, 0, OPEN_EXISTING), DWORD{ERROR_FILE_NOT_FOUND});
    const std::string inMissing = profile::ScratchPath("missing\\file");
    EXPECT_EQ(OpenError(inMissing.c_str(), GENERIC_READ, 0, OPEN_EXISTING), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(OpenError(inMissing.c_str(), readWrite, 0, OPEN_ALWAYS), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(OpenError("", readWrite, 0, OPEN_ALWAYS), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST(SystemFiles, AreCreatedAndEmptiedByTheirDispositions)
{
    const ScratchFile file;
    EXPECT_EQ(OpenError(file.Path(), readWrite, 0, OPEN_ALWAYS), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(file.Content(), "");
    file.Write("text");
    EXPECT_EQ(OpenError(file.Path(), readWrite, 0, OPEN_ALWAYS), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(file.Content(), "text");
    EXPECT_EQ(OpenError(file.Path(), readWrite, 0, CREATE_NEW), DWORD{ERROR_FILE_EXISTS});
    EXPECT_EQ(OpenError(file.Path(), readWrite, 0, CREATE_ALWAYS), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(file.Content(), "");
}

TEST(SystemFiles, AreNewWithTheirAttributes)
{
    const ScratchFile file;
    const HANDLE handle =
        CreateFileA(file.Path(), readWrite, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_READONLY, nullptr);
    DWORD count = 0;
    EXPECT_TRUE(WriteFile(handle, "text", 4, &count, nullptr)); // the handle may all the same
    CloseHandle(handle);
    EXPECT_TRUE(file.IsReadOnly());
    EXPECT_EQ(file.Content(), "text");
}

TEST(SystemFiles, AreSharedOnlyAsEveryHandleAllows)
{
    const ScratchFile file;
    file.Write("text");
    const HANDLE held = Open(file.Path(), readWrite, FILE_SHARE_READ, OPEN_EXISTING);
    constexpr DWORD shareBoth = FILE_SHARE_READ | FILE_SHARE_WRITE;
    EXPECT_EQ(OpenError(file.Path(), GENERIC_READ, shareBoth, OPEN_EXISTING), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(OpenError(file.Path(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING),
              DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(OpenError(file.Path(), readWrite, shareBoth, OPEN_EXISTING), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(OpenError(file.Path(), readWrite, shareBoth, OPEN_ALWAYS), DWORD{ERROR_SHARING_VIOLATION});
    CloseHandle(held);
    EXPECT_EQ(OpenError(file.Path(), readWrite, 0, OPEN_EXISTING), DWORD{ERROR_SUCCESS});
}

TEST(SystemFiles, CannotBeDeletedWhileAHandleForbidsIt)
{
    const ScratchFile file;
    file.Write("text");
    const HANDLE held = Open(file.Path(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
    EXPECT_FALSE(DeleteFileA(file.Path()));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
    CloseHandle(held);
    EXPECT_TRUE(DeleteFileA(file.Path()));
    EXPECT_FALSE(DeleteFileA(file.Path()));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST(SystemFiles, CannotBeDeletedWhenReadOnly)
{
    const ScratchFile file;
    file.Write("text");
    file.SetReadOnly(true);
    EXPECT_FALSE(DeleteFileA(file.Path()));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(file.Content(), "text");
}

TEST(SystemFiles, ReadUpToTheEndAndThenNothing)
{
    const ScratchFile file;
    file.Write("text");
    const HANDLE handle = Open(file.Path(), GENERIC_READ, 0, OPEN_EXISTING);
    std::array<char, 16> buffer{};
    DWORD count = 99;
    EXPECT_TRUE(ReadFile(handle, buffer.data(), 16, &count, nullptr));
    EXPECT_EQ(count, 4U);
    EXPECT_TRUE(ReadFile(handle, buffer.data(), 16, &count, nullptr));
    EXPECT_EQ(count, 0U);
    EXPECT_FALSE(WriteFile(handle, "x", 1, &count, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    CloseHandle(handle);
}

TEST(SystemFiles, AreCutAtThePosition)
{
    const ScratchFile file;
    file.Write("a long text");
    const HANDLE handle = Open(file.Path(), readWrite, 0, OPEN_EXISTING);
    DWORD count = 0;
    EXPECT_TRUE(WriteFile(handle, "new", 3, &count, nullptr));
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(GetFileSize(handle, nullptr), 11U);
    EXPECT_TRUE(SetEndOfFile(handle));
    EXPECT_EQ(GetFileSize(handle, nullptr), 3U);
    EXPECT_EQ(SetFilePointer(handle, 1, nullptr, FILE_BEGIN), 1U);
    CloseHandle(handle);
    EXPECT_EQ(file.Content(), "new");
}

TEST(SystemFiles, RefuseAHandleThatIsNone)
{
    DWORD count = 0;
    EXPECT_FALSE(ReadFile(nullptr, &count, 1, &count, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_FALSE(CloseHandle(INVALID_HANDLE_VALUE) && CloseHandle(nullptr));
}

TEST(SystemFiles, ReportExistenceAndWriteAccess)
{
    const ScratchFile file;
    EXPECT_EQ(_access(file.Path(), 0), -1);
    EXPECT_EQ(_chmod(file.Path(), _S_IREAD), -1);
    file.Write("text");
    EXPECT_EQ(_access(file.Path(), 0), 0);
    EXPECT_EQ(_access(file.Path(), 2), 0);
    EXPECT_EQ(_chmod(file.Path(), _S_IREAD), 0);
    EXPECT_TRUE(file.IsReadOnly());
    EXPECT_EQ(_access(file.Path(), 0), 0);
    EXPECT_EQ(_access(file.Path(), 2), -1);
    EXPECT_EQ(_chmod(file.Path(), _S_IREAD | _S_IWRITE), 0);
    EXPECT_FALSE(file.IsReadOnly());
}

TEST(SystemFiles, CompareTextsByTheCaseOfAsciiLettersAlone)
{
    EXPECT_EQ(_stricmp("AbZ[", "aBz["), 0);
    EXPECT_NE(_stricmp("\xC4", "\xE4"), 0);
    EXPECT_NE(_stricmp("[", "{"), 0);
    EXPECT_EQ(_strnicmp("abX", "ABy", 2), 0);
    EXPECT_NE(_strnicmp("abX", "ABy", 3), 0);
}

} // namespace
