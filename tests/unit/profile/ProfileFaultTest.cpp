// What the profile engine does when the system lets it down: every allocation and every call of Windows fails
// once, the first, the second and so on, through opening, each operation and saving. Natively the leak check
// watches, too.
#include "ProfileFixture.h"
#include "support/ImportHook.h"

#include <algorithm>
#include <io.h>
#include <windows.h>

namespace {

using profile::compact;
using profile::Request;
using profile::ScratchFile;
using profile::sectioned;
using Lines = std::vector<std::string>;

// The error that failed calls report: one that nothing else causes.
constexpr DWORD injectedError = 1117;

constexpr std::int16_t succeeded = PROF_OK;

const HMODULE self = GetModuleHandleA(nullptr);

// Counts calls down to the one that fails.
class FailurePoint
{
  public:
    explicit FailurePoint(int place) : m_remaining(place) {}

    bool Fails(const char* call)
    {
        if (--m_remaining != 0)
            return false;
        m_failed = call;
        SetLastError(injectedError);
        return true;
    }

    [[nodiscard]] bool HasFailed() const { return m_failed != nullptr; }
    [[nodiscard]] std::string Failed() const { return m_failed == nullptr ? "(none)" : m_failed; }

  private:
    int m_remaining;
    const char* m_failed = nullptr;
};

// A hook of one function that answers `failure` when its turn has come. A macro, since each hook needs a
// lambda expression of its own.
#define FAIL_AT(point, function, type, failure)                                                              \
    support::HookImport<type>(self, #function, [&point](auto original, auto... arguments) {                  \
        return point.Fails(#function) ? decltype(original(arguments...))(failure) : original(arguments...);  \
    })

// Their declarations differ between C libraries in what they say of exceptions.
using Malloc = void*(std::size_t);
using Realloc = void*(void*, std::size_t);
using Duplicate = char*(const char*);

using Call = std::int16_t (*)(Request&, const char* path);

// Performs the call while allocations fail at their point. The call must not allocate for itself.
std::int16_t WithFailingMemory(FailurePoint& point, Request& request, const char* path, Call call)
{
    auto allocate = FAIL_AT(point, malloc, Malloc, nullptr);
    auto grow = FAIL_AT(point, realloc, Realloc, nullptr);
    auto duplicate = FAIL_AT(point, _strdup, Duplicate, nullptr);
    return call(request, path);
}

// Performs the call while the calls of Windows fail at their point. A handle is closed even when the close
// fails.
std::int16_t WithFailingSystem(FailurePoint& point, Request& request, const char* path, Call call)
{
    auto create = FAIL_AT(point, CreateFileA, decltype(CreateFileA), INVALID_HANDLE_VALUE);
    auto read = FAIL_AT(point, ReadFile, decltype(ReadFile), FALSE);
    auto write = FAIL_AT(point, WriteFile, decltype(WriteFile), FALSE);
    auto cut = FAIL_AT(point, SetEndOfFile, decltype(SetEndOfFile), FALSE);
    auto size = FAIL_AT(point, GetFileSize, decltype(GetFileSize), INVALID_FILE_SIZE);
    auto remove = FAIL_AT(point, DeleteFileA, decltype(DeleteFileA), FALSE);
    auto access = FAIL_AT(point, _access, decltype(_access), -1);
    auto mode = FAIL_AT(point, _chmod, decltype(_chmod), -1);
    auto close =
        support::HookImport<decltype(CloseHandle)>(self, "CloseHandle", [&](auto original, HANDLE file) {
            const BOOL isClosed = original(file);
            return point.Fails("CloseHandle") ? FALSE : isClosed;
        });
    return call(request, path);
}

std::int16_t OpenIt(Request& request, const char* path)
{
    return ProfileOpen(path, request.Block());
}

std::int16_t ExecuteIt(Request& request, const char* /*path*/)
{
    return ProfileExecute(request.Block());
}

std::int16_t SaveIt(Request& request, const char* /*path*/)
{
    return ProfileSave(request.Block());
}

bool ReportsItsError(const std::string& call)
{
    return call == "CreateFileA" || call == "ReadFile" || call == "WriteFile" || call == "SetEndOfFile";
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
        self, "ReadFile",
        [](auto original, HANDLE handle, LPVOID buffer, DWORD size, LPDWORD count, auto overlapped) {
            return original(handle, buffer, std::min<DWORD>(size, 1), count, overlapped);
        });
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Lines(), contentLines);
}

TEST(ProfileFaults, AFailureWithoutAnErrorIsStillOne)
{
    auto fail = support::HookImport<decltype(CreateFileA)>(self, "CreateFileA", [](auto, auto...) {
        SetLastError(ERROR_SUCCESS);
        return INVALID_HANDLE_VALUE;
    });
    Request request;
    EXPECT_EQ(request.Open("profile.ini"), ERROR_GEN_FAILURE);
}

TEST(ProfileFaults, ARefusedOpenReportsWindowsError)
{
    auto refuse = support::HookImport<decltype(CreateFileA)>(self, "CreateFileA", [](auto, auto...) {
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

// --- saving

// A request whose lines differ from the file.
void Change(Request& request, const ScratchFile& file)
{
    file.Write("old\r\n");
    request.Open(file);
    EXPECT_EQ(request.Execute(PROF_APPEND_LAST, "new"), PROF_OK);
}

TEST(ProfileFaults, SavingEitherWritesEverythingOrFailsAndLeavesNoFile)
{
    int place = 1;
    for (bool hasFailed = true; hasFailed; ++place) {
        const ScratchFile file;
        Request request;
        Change(request, file);
        FailurePoint point(place);
        const std::int16_t status = WithFailingSystem(point, request, file.Path(), SaveIt);
        hasFailed = point.HasFailed();
        // After a failing _access the file may seem to have vanished; that is tested below.
        if (ReportsItsError(point.Failed())) {
            EXPECT_EQ(status, injectedError) << point.Failed();
        } else if (point.Failed() != "_access") {
            EXPECT_EQ(status, PROF_OK) << point.Failed();
        }
        const auto expected = status == PROF_OK ? std::optional<std::string>("old\r\nnew\r\n") : std::nullopt;
        EXPECT_EQ(file.Content(), expected) << point.Failed() << ", status " << status;
        EXPECT_EQ(request.Lines(), (Lines{"old", "new"}));
    }
    EXPECT_GT(place, 8);
}

TEST(ProfileFaults, SavingTakesNoMemory)
{
    const ScratchFile file;
    Request request;
    Change(request, file);
    FailurePoint point(1);
    EXPECT_EQ(WithFailingMemory(point, request, file.Path(), SaveIt), PROF_OK);
    EXPECT_FALSE(point.HasFailed());
}

TEST(ProfileFaults, SavingStopsAtTheFirstWriteThatFails)
{
    const ScratchFile file;
    file.Write(std::string(30000, '\n') + "x");
    Request request;
    request.Open(file);
    int writes = 0;
    auto fail = support::HookImport<decltype(WriteFile)>(self, "WriteFile", [&](auto, auto...) {
        ++writes;
        SetLastError(ERROR_DISK_FULL);
        return FALSE;
    });
    EXPECT_EQ(request.Save(), ERROR_DISK_FULL);
    EXPECT_EQ(writes, 1);
    EXPECT_EQ(file.Content(), std::nullopt);
}

TEST(ProfileFaults, AShortWriteIsAFullDisk)
{
    const ScratchFile file;
    Request request;
    Change(request, file);
    auto writeLittle = support::HookImport<decltype(WriteFile)>(
        self, "WriteFile",
        [](auto original, HANDLE handle, LPCVOID data, DWORD size, LPDWORD count, auto overlapped) {
            return original(handle, data, size - 1, count, overlapped);
        });
    EXPECT_EQ(request.Save(), ERROR_DISK_FULL);
    EXPECT_EQ(file.Content(), std::nullopt);
}

TEST(ProfileFaults, AFileThatSeemsToHaveVanishedIsNotWritten)
{
    const ScratchFile file;
    Request request;
    Change(request, file);
    auto vanish = support::HookImport<decltype(_access)>(self, "_access", [](auto, auto...) { return -1; });
    EXPECT_EQ(request.Save(), ERROR_FILE_NOT_FOUND);
}

} // namespace
