// What opening and the operations of the profile engine do when the system lets them down: every allocation
// and every call of Windows fails once, the first, the second and so on.
#include "ProfileFaults.h"
#include "support/FailNth.h"

#include <algorithm>

namespace {

using profile::compact;
using profile::FailurePoint;
using profile::injectedError;
using profile::Request;
using profile::ScratchFile;
using profile::sectioned;
using profile::thisProgram;
using profile::WithFailingMemory;
using profile::WithFailingSystem;
using Lines = std::vector<std::string>;

constexpr std::int16_t succeeded = PROF_OK;

std::int16_t OpenIt(Request& request, const char* path)
{
    return ProfileOpen(path, request.Block());
}

std::int16_t ExecuteIt(Request& request, const char* /*path*/)
{
    return ProfileExecute(request.Block());
}

bool ReportsItsError(const std::string& call)
{
    return call == "CreateFileA" || call == "ReadFile";
}

const std::string content = "a=1\r\n[S]\r\na=x;y\r\n;c\r\n\r\n[T]\r\nb=2\r\n";
const Lines contentLines = {"a=1", "[S]", "a=x;y", ";c", "", "[T]", "b=2"};

// --- opening

TEST(ProfileFaults, OpeningWithoutMemoryOpensNothingAndLeavesTheFile)
{
    for (int place = 1;; ++place) {
        const ScratchFile file;
        file.Write(content);
        Request request;
        FailurePoint point(place);
        const std::int16_t status = WithFailingMemory(point, request, file.Path(), OpenIt);
        if (!point.HasFailed()) {
            EXPECT_GT(place, 14); // the file, its first line, and seven lines of two allocations each
            EXPECT_EQ(status, PROF_OK);
            break;
        }
        EXPECT_EQ(status, PROF_NO_MEMORY) << point.Failed() << ", allocation " << place;
        EXPECT_EQ(request.Block().file, nullptr);
        EXPECT_EQ(file.Content(), content);
        EXPECT_TRUE(DeleteFileA(file.Path())) << "a handle is open";
    }
}

TEST(ProfileFaults, OpeningReportsTheFirstCallThatFails)
{
    for (int place = 1;; ++place) {
        const ScratchFile file;
        file.Write(content);
        Request request;
        FailurePoint point(place);
        const std::int16_t status = WithFailingSystem(point, request, file.Path(), OpenIt);
        if (!point.HasFailed()) {
            EXPECT_GT(place, 3); // create, read, close
            break;
        }
        const std::int16_t expected =
            ReportsItsError(point.Failed()) ? std::int16_t{injectedError} : succeeded;
        EXPECT_EQ(status, expected) << point.Failed();
        EXPECT_EQ(request.Block().file == nullptr, status != PROF_OK) << point.Failed();
        EXPECT_EQ(file.Content(), content);
    }
}

TEST(ProfileFaults, ReadingGoesOnAfterShortReads)
{
    const ScratchFile file;
    file.Write(content);
    auto readLittle = support::HookImport<decltype(ReadFile)>(
        thisProgram, "ReadFile",
        [](auto original, HANDLE handle, LPVOID buffer, DWORD size, LPDWORD count, auto overlapped) {
            return original(handle, buffer, std::min<DWORD>(size, 1), count, overlapped);
        });
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Lines(), contentLines);
}

TEST(ProfileFaults, AFailureWithoutAnErrorIsStillOne)
{
    const ScratchFile file;
    Request request;
    {
        const support::FailNth<"CreateFileA", decltype(CreateFileA)> fail(thisProgram, 1,
                                                                          INVALID_HANDLE_VALUE);
        EXPECT_EQ(request.Open(file.Path()), ERROR_GEN_FAILURE);
    }
    const support::FailNth<"ReadFile", decltype(ReadFile)> fail(thisProgram, 1, FALSE);
    EXPECT_EQ(request.Open(file.Path()), ERROR_GEN_FAILURE);
    EXPECT_EQ(request.Block().file, nullptr);
}

TEST(ProfileFaults, ARefusedOpenReportsWindowsError)
{
    auto refuse = support::HookImport<decltype(CreateFileA)>(thisProgram, "CreateFileA", [](auto, auto...) {
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    });
    Request request;
    EXPECT_EQ(request.Open("profile.ini"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(request.Block().file, nullptr);
}

// --- operations

// Opens the content, copies a section to the clipboard and puts the cursor on the first entry.
void Prepare(Request& request, const ScratchFile& file, std::uint16_t operation, const std::string& key)
{
    file.Write(content);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("S", PROF_SECTION_COPY), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_FIND_FIRST, "a"), PROF_OK);
    // With an unknown code the texts are filled in and nothing happens.
    EXPECT_EQ(request.ExecuteIn("S", 0, key, "value"), PROF_OK);
    request.Block().operation = operation;
}

// Runs the operation with its first allocation failing, then its second and so on, until none fails. Returns
// how many there were.
int SweepMemory(std::uint8_t mode, std::uint16_t operation, const std::string& key)
{
    for (int place = 1;; ++place) {
        const ScratchFile file;
        Request request(mode);
        Prepare(request, file, operation, key);
        const Lines clipboard = request.Clipboard();
        FailurePoint point(place);
        const std::int16_t status = WithFailingMemory(point, request, file.Path(), ExecuteIt);
        if (!point.HasFailed())
            return place - 1;
        EXPECT_EQ(status, PROF_NO_MEMORY) << "operation " << operation << ", allocation " << place;
        EXPECT_EQ(request.Lines(), contentLines) << "operation " << operation << ", allocation " << place;
        EXPECT_EQ(request.Clipboard(), clipboard) << "operation " << operation << ", allocation " << place;
    }
}

TEST(ProfileFaults, AnOperationWithoutMemoryChangesNothing)
{
    for (const std::uint16_t operation : profile::Codes{6, 11, 20, 21, 40, 41, 42})
        EXPECT_EQ(SweepMemory(compact, operation, "a"), 2) << operation; // line and text
    for (const std::uint16_t operation : profile::Codes{1, 2, 8, 10, 18, 51})
        EXPECT_EQ(SweepMemory(compact, operation, "a"), 1) << operation; // text
    for (const std::uint16_t operation : profile::Codes{1, 2, 8, 21})
        EXPECT_EQ(SweepMemory(sectioned, operation, "new"), 6) << operation; // blank line, header, entry
    EXPECT_EQ(SweepMemory(sectioned, PROF_ADD_SECTION_AT_END, ""), 4);
    EXPECT_EQ(SweepMemory(compact, PROF_SECTION_COPY, ""), 8);
    EXPECT_EQ(SweepMemory(compact, PROF_PASTE_AT_END, ""), 8);
}

TEST(ProfileFaults, RemovingFromAValueWithoutMemoryChangesNothing)
{
    const ScratchFile file;
    file.Write("a=one two\r\n");
    Request request(compact);
    request.Open(file);
    EXPECT_EQ(request.Execute(0, "a", "two"), PROF_OK);
    request.Block().operation = PROF_REMOVE_FROM_VALUE;
    FailurePoint point(1);
    EXPECT_EQ(WithFailingMemory(point, request, file.Path(), ExecuteIt), PROF_NO_MEMORY);
    EXPECT_EQ(request.Lines(), Lines{"a=one two"});
}

TEST(ProfileFaults, FindingAndDeletingTakeNoMemory)
{
    for (const std::uint16_t operation : profile::Codes{3, 4, 5, 13, 14, 15, 16, 50, 52, 61})
        EXPECT_EQ(SweepMemory(compact, operation, "a"), 0) << operation;
}

} // namespace
