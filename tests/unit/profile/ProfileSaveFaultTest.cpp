// What saving does when the system lets it down: each of its calls of Windows fails once, for files of every
// condition. What is said of the file afterwards is the whole of it; natively the leak check watches, too.
#include "ProfileFaults.h"
#include "support/FailNth.h"

namespace {

using profile::FailurePoint;
using profile::raw;
using profile::Request;
using profile::SaveIt;
using profile::ScratchFile;
using profile::thisProgram;
using Outcomes = std::vector<std::string>;

// In what condition a file is saved.
struct Condition
{
    bool isReadOnly;
    bool isEmptied; // by the edit: else a line is added
    std::uint8_t flags = raw;
};

// A request whose lines differ from the file, which holds "old" or, when the request made it, nothing.
void Change(Request& request, const ScratchFile& file, const Condition& condition)
{
    file.Write("old\r\n");
    request.Open(file);
    if (condition.isEmptied)
        EXPECT_EQ(request.Execute(PROF_DELETE_FIRST, "old"), PROF_OK);
    else
        EXPECT_EQ(request.Execute(PROF_APPEND_LAST, "new"), PROF_OK);
    file.SetReadOnly(condition.isReadOnly);
}

std::string Described(const ScratchFile& file)
{
    const std::optional<std::string> content = file.Content();
    if (!content)
        return "gone";
    const std::string text = content == "old\r\n"          ? "old"
                             : content == "old\r\nnew\r\n" ? "new"
                             : content == "new\r\n"        ? "new"
                             : content->empty()            ? "empty"
                                                           : "broken";
    return text + (file.IsReadOnly() ? ", read-only" : "");
}

// Saves with the first call of Windows failing, then the second and so on, until none fails. Each outcome
// reads "CALL: status, file".
Outcomes Sweep(const Condition& condition)
{
    Outcomes outcomes;
    for (int place = 1;; ++place) {
        const ScratchFile file;
        Request request(condition.flags);
        Change(request, file, condition);
        const std::vector<std::string> lines = request.Lines();
        FailurePoint point(place);
        const std::int16_t status = WithFailingSystem(point, request, file.Path(), SaveIt);
        outcomes.push_back(point.Failed() + ": " + std::to_string(status) + ", " + Described(file));
        EXPECT_EQ(request.Lines(), lines) << outcomes.back();
        if (!point.HasFailed())
            return outcomes;
    }
}

// --- every call, one after the other

TEST(ProfileSaveFaults, LeaveAWritableFileWholeOrGone)
{
    const Outcomes expected = {"_access: 0, new",
                               "_access: 0, new, read-only", // as the file was said to be
                               "_access: 2, gone",
                               "CreateFileA: 1117, gone",
                               "GetFileSize: 0, new",
                               "WriteFile: 1117, gone",
                               "SetFilePointer: 0, new",
                               "SetEndOfFile: 0, new",
                               "GetFileSize: 0, new",
                               "CloseHandle: 0, new",
                               "(none): 0, new"};
    EXPECT_EQ(Sweep({.isReadOnly = false, .isEmptied = false}), expected);
}

TEST(ProfileSaveFaults, LeaveAReadOnlyFileReadOnlyOrGone)
{
    const Outcomes expected = {"_access: 5, old, read-only",
                               "_access: 0, new, read-only",
                               "_chmod: 5, old, read-only",
                               "_access: 2, gone",
                               "CreateFileA: 1117, gone",
                               "GetFileSize: 0, new, read-only",
                               "WriteFile: 1117, gone",
                               "SetFilePointer: 0, new, read-only",
                               "SetEndOfFile: 0, new, read-only",
                               "GetFileSize: 0, new, read-only",
                               "CloseHandle: 0, new, read-only",
                               "_chmod: 0, new", // written, only its attribute is lost
                               "(none): 0, new, read-only"};
    EXPECT_EQ(Sweep({.isReadOnly = true, .isEmptied = false}), expected);
}

// Whether the file is empty now shows by its size alone, so one that could not be cut is kept.
TEST(ProfileSaveFaults, DeleteAFileThatTheEditEmptied)
{
    const Outcomes expected = {"_access: 0, gone",        "_access: 0, gone",        "_access: 2, gone",
                               "CreateFileA: 1117, gone", "SetFilePointer: 0, gone", "SetEndOfFile: 0, old",
                               "GetFileSize: 0, empty",   "CloseHandle: 0, gone",    "DeleteFileA: 0, empty",
                               "(none): 0, gone"};
    EXPECT_EQ(Sweep({.isReadOnly = false, .isEmptied = true}), expected);
}

TEST(ProfileSaveFaults, DeleteAReadOnlyFileThatTheEditEmptied)
{
    const Outcomes expected = {"_access: 5, old, read-only",
                               "_access: 0, gone",
                               "_chmod: 5, old, read-only",
                               "_access: 2, gone",
                               "CreateFileA: 1117, gone",
                               "SetFilePointer: 0, gone",
                               "SetEndOfFile: 0, old, read-only",
                               "GetFileSize: 0, empty, read-only",
                               "CloseHandle: 0, gone",
                               "DeleteFileA: 0, empty, read-only",
                               "(none): 0, gone"};
    EXPECT_EQ(Sweep({.isReadOnly = true, .isEmptied = true}), expected);
}

// Whether such a file is still there is left to the open, so that is one question less.
TEST(ProfileSaveFaults, LeaveANewFileWholeOrGone)
{
    const Outcomes expected = {"_access: 0, new",         "_access: 0, new, read-only",
                               "CreateFileA: 1117, gone", "GetFileSize: 0, new",
                               "WriteFile: 1117, gone",   "SetFilePointer: 0, new",
                               "SetEndOfFile: 0, new",    "GetFileSize: 0, new",
                               "CloseHandle: 0, new",     "(none): 0, new"};
    EXPECT_EQ(Sweep({.isReadOnly = false, .isEmptied = false, .flags = PROF_CREATE}), expected);
}

// --- failures of their own kind

TEST(ProfileSaveFaults, OfAWriteWithoutAnErrorAreStillFailures)
{
    const ScratchFile file;
    Request request;
    Change(request, file, {});
    const support::FailNth<"WriteFile", decltype(WriteFile)> fail(thisProgram, 1, FALSE);
    EXPECT_EQ(request.Save(), ERROR_GEN_FAILURE);
    EXPECT_EQ(Described(file), "gone");
}

// Saves a file that becomes shorter.
std::int16_t Shorten(const ScratchFile& file)
{
    file.Write("first\r\nsecond\r\n");
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Execute(PROF_DELETE_FIRST, "first"), PROF_OK);
    return request.Save();
}

TEST(ProfileSaveFaults, OfTheCutAreNoFailure)
{
    const ScratchFile file;
    {
        const support::FailNth<"SetEndOfFile", decltype(SetEndOfFile)> fail(thisProgram, 1, FALSE,
                                                                            ERROR_ACCESS_DENIED);
        EXPECT_EQ(Shorten(file), PROF_OK);
        EXPECT_EQ(file.Content(), "second\r\n\r\n\r\n\r\n\n");
    }
    const support::FailNth<"SetFilePointer", decltype(SetFilePointer)> fail(
        thisProgram, 1, INVALID_SET_FILE_POINTER, ERROR_ACCESS_DENIED);
    EXPECT_EQ(Shorten(file), PROF_OK);
    EXPECT_EQ(file.Content(), "second\r\n\r\n\r\n\r\n\n");
}

TEST(ProfileSaveFaults, OfTheOldSizeAddNoEmptyLines)
{
    const ScratchFile file;
    const support::FailNth<"GetFileSize", decltype(GetFileSize)> fail(thisProgram, 1, INVALID_FILE_SIZE,
                                                                      ERROR_ACCESS_DENIED);
    EXPECT_EQ(Shorten(file), PROF_OK);
    EXPECT_EQ(file.Content(), "second\r\n");
}

TEST(ProfileSaveFaults, AreReportedByTheirLastSixteenBits)
{
    const ScratchFile file;
    Request request;
    Change(request, file, {});
    const support::FailNth<"WriteFile", decltype(WriteFile)> fail(thisProgram, 1, FALSE, 0xABCD0005);
    EXPECT_EQ(request.Save(), 5);
}

TEST(ProfileSaveFaults, ReportTheFirstFailureWhenTheDeletionFailsToo)
{
    const ScratchFile file;
    Request request;
    Change(request, file, {.isReadOnly = true, .isEmptied = false});
    const support::FailNth<"WriteFile", decltype(WriteFile)> write(thisProgram, 1, FALSE, ERROR_DISK_FULL);
    const support::FailNth<"DeleteFileA", decltype(DeleteFileA)> remove(thisProgram, 1, FALSE,
                                                                        ERROR_ACCESS_DENIED);
    EXPECT_EQ(request.Save(), ERROR_DISK_FULL);
    EXPECT_EQ(Described(file), "old, read-only");
}

TEST(ProfileSaveFaults, OfMemoryLeaveTheFileAsItIs)
{
    for (const bool isReadOnly : {false, true}) {
        const ScratchFile file;
        Request request;
        Change(request, file, {.isReadOnly = isReadOnly, .isEmptied = false});
        FailurePoint point(1);
        EXPECT_EQ(WithFailingMemory(point, request, file.Path(), SaveIt), PROF_NO_MEMORY);
        EXPECT_EQ(Described(file), isReadOnly ? "old, read-only" : "old");
        FailurePoint second(2);
        EXPECT_EQ(WithFailingMemory(second, request, file.Path(), SaveIt), PROF_OK);
        EXPECT_FALSE(second.HasFailed());
    }
}

TEST(ProfileSaveFaults, OfMemoryDoNotHappenWithoutLines)
{
    const ScratchFile file;
    Request request;
    Change(request, file, {.isReadOnly = false, .isEmptied = true});
    FailurePoint point(1);
    EXPECT_EQ(WithFailingMemory(point, request, file.Path(), SaveIt), PROF_OK);
    EXPECT_FALSE(point.HasFailed());
    EXPECT_EQ(Described(file), "gone");
}

TEST(ProfileSaveFaults, OfAWriteEndTheWriting)
{
    const ScratchFile file;
    file.Write(std::string(30000, '\n') + "x");
    Request request;
    request.Open(file);
    int writes = 0;
    auto fail = support::HookImport<decltype(WriteFile)>(thisProgram, "WriteFile", [&](auto, auto...) {
        ++writes;
        SetLastError(ERROR_DISK_FULL);
        return FALSE;
    });
    EXPECT_EQ(request.Save(), ERROR_DISK_FULL);
    EXPECT_EQ(writes, 1);
    EXPECT_EQ(file.Content(), std::nullopt);
}

TEST(ProfileSaveFaults, IncludeAShortWriteWhichIsAFullDisk)
{
    const ScratchFile file;
    Request request;
    Change(request, file, {});
    auto writeLittle = support::HookImport<decltype(WriteFile)>(
        thisProgram, "WriteFile",
        [](auto original, HANDLE handle, LPCVOID data, DWORD size, LPDWORD count, auto overlapped) {
            return original(handle, data, size - 1, count, overlapped);
        });
    EXPECT_EQ(request.Save(), ERROR_DISK_FULL);
    EXPECT_EQ(file.Content(), std::nullopt);
}

TEST(ProfileSaveFaults, IncludeAFileThatSeemsToHaveVanished)
{
    const ScratchFile file;
    Request request;
    Change(request, file, {});
    auto vanish =
        support::HookImport<decltype(_access)>(thisProgram, "_access", [](auto, auto...) { return -1; });
    EXPECT_EQ(request.Save(), ERROR_FILE_NOT_FOUND);
}

} // namespace
