// How lines become a file again, and what is left behind.
#include "ProfileFixture.h"
#include "support/FakeClock.h"

#include <windows.h>

namespace {

using profile::Request;
using profile::ScratchFile;

TEST(ProfileSave, RefusesARequestWithoutAFile)
{
    Request request;
    EXPECT_EQ(request.Save(), PROF_NOT_OPEN);
}

TEST(ProfileSave, EndsEveryLineWithCarriageReturnAndLineFeed)
{
    const ScratchFile file;
    for (const char* const content : {"a\r\nb\r\n", "a\nb\n", "a\n\rb\n\r", "a\r\nb"}) {
        file.Write(content);
        Request request;
        request.Open(file);
        EXPECT_EQ(request.Save(), PROF_OK);
        EXPECT_EQ(file.Content(), "a\r\nb\r\n");
    }
}

TEST(ProfileSave, WritesALineThatWasSplitAsSeveral)
{
    const ScratchFile file;
    file.Write(std::string(1500, 'x'));
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_EQ(file.Content(), std::string(599, 'x') + "\r\n" + std::string(599, 'x') + "\r\n" +
                                  std::string(302, 'x') + "\r\n");
}

// Only part of its ending is read with such a line; the rest is taken for a line of its own.
TEST(ProfileSave, AddsAnEmptyLineBelow598Or599Characters)
{
    for (const std::size_t length : {598U, 599U}) {
        const ScratchFile file;
        const std::string longLine(length, 'x');
        std::string content = longLine + "\r\nb\r\n";
        file.Write(content);
        for (int save = 1; save <= 3; ++save) {
            Request request;
            request.Open(file);
            EXPECT_EQ(request.Save(), PROF_OK);
            content.insert(longLine.size(), "\r\n");
            EXPECT_EQ(file.Content(), content) << length << " characters, save " << save;
        }
    }
}

TEST(ProfileSave, AddsNoOtherEmptyLines)
{
    const ScratchFile file;
    for (const std::string& content : {std::string(598, 'x') + "\r\n", std::string(599, 'x') + "\r\n",
                                       std::string(597, 'x') + "\r\nb\r\n"})
    {
        file.Write(content);
        Request request;
        request.Open(file);
        EXPECT_EQ(request.Save(), PROF_OK);
        EXPECT_EQ(file.Content(), content);
    }
}

TEST(ProfileSave, LosesWhatFollowsAnEndOfFileMark)
{
    const ScratchFile file;
    file.Write("ab\x1A"
               "cd\r\ne\r\n");
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_EQ(file.Content(), "ab\r\ne\r\n");
}

TEST(ProfileSave, CutsAFileThatBecameShorter)
{
    const ScratchFile file;
    file.Write("first\r\nsecond\r\n");
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Execute(PROF_DELETE_FIRST, "second"), PROF_OK);
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_EQ(file.Content(), "first\r\n");
}

TEST(ProfileSave, WritesAFileOfManyLines)
{
    const ScratchFile file;
    std::string content;
    for (int i = 0; i < 5000; ++i)
        content += "line number " + std::to_string(i) + "\r\n";
    file.Write(content);
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_EQ(file.Content(), content);
}

TEST(ProfileSave, KeepsTheLinesInMemory)
{
    const ScratchFile file;
    file.Write("a\r\n");
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_APPEND_LAST, "b"), PROF_OK);
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_EQ(file.Content(), "a\r\nb\r\n");
}

// --- empty files

TEST(ProfileSave, DeletesAFileWithoutLines)
{
    const ScratchFile file;
    for (const char* const content : {"", "\r\n\r\n", " \t\r\n"}) {
        file.Write(content);
        Request request;
        request.Open(file);
        EXPECT_EQ(request.Save(), PROF_OK);
        EXPECT_EQ(file.Content(), std::nullopt);
    }
}

TEST(ProfileSave, LeavesNothingBehindOfAFileThatOpeningMade)
{
    const ScratchFile file;
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_EQ(file.Content(), std::nullopt);
}

TEST(ProfileSave, DeletesAFileWhoseLastLineIsGone)
{
    EXPECT_EQ(profile::Edited(profile::raw, "a\r\n", {{PROF_DELETE_FIRST, "a", "", ""}}, PROF_OK,
                              support::Location::current()),
              std::nullopt);
}

// --- read-only files

TEST(ProfileSave, LeavesAReadOnlyFileReadOnly)
{
    const ScratchFile file;
    file.Write("a\r\n");
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Execute(PROF_APPEND_LAST, "b"), PROF_OK);
    file.SetReadOnly(true);
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_EQ(file.Content(), "a\r\nb\r\n");
    EXPECT_TRUE(file.IsReadOnly());
}

TEST(ProfileSave, LeavesAWritableFileWritable)
{
    const ScratchFile file;
    file.Write("a\r\n");
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_FALSE(file.IsReadOnly());
}

TEST(ProfileSave, DeletesAReadOnlyFileThatBecameEmpty)
{
    const ScratchFile file;
    file.Write("a\r\n");
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Execute(PROF_DELETE_FIRST, "a"), PROF_OK);
    file.SetReadOnly(true);
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_EQ(file.Content(), std::nullopt);
}

// --- failures

TEST(ProfileSave, FailsForAFileThatVanished)
{
    for (const std::uint8_t flags : {profile::raw, std::uint8_t{PROF_CREATE}}) {
        const ScratchFile file;
        Request request(flags);
        request.Open(file);
        EXPECT_EQ(request.Execute(PROF_APPEND_LAST, "a"), PROF_OK);
        DeleteFileA(file.Path());
        EXPECT_EQ(request.Save(), ERROR_FILE_NOT_FOUND);
        EXPECT_EQ(file.Content(), std::nullopt);
        EXPECT_EQ(request.Lines(), std::vector<std::string>{"a"});
    }
}

TEST(ProfileSave, FailsForAFileThatSomebodyElseReads)
{
    const ScratchFile file;
    file.Write("a\r\n");
    Request request;
    request.Open(file);
    const HANDLE reader = CreateFileA(file.Path(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    file.SetReadOnly(true);
    const support::FakeClock clock(GetModuleHandleA(nullptr));
    EXPECT_EQ(request.Save(), ERROR_SHARING_VIOLATION);
    CloseHandle(reader);
    EXPECT_EQ(file.Content(), "a\r\n");
    EXPECT_TRUE(file.IsReadOnly());
}

TEST(ProfileSave, SharesTheFileWithReadersThatShareWriting)
{
    const ScratchFile file;
    file.Write("a\r\n");
    Request request;
    request.Open(file);
    const HANDLE reader = CreateFileA(file.Path(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_EQ(request.Save(), PROF_OK);
    CloseHandle(reader);
}

// --- closing

TEST(ProfileClose, ClearsTheRequest)
{
    const ScratchFile file;
    file.Write("[A]\r\nb\r\n");
    Request request(profile::sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_COPY), PROF_OK);
    ProfileClose(request.Block());
    EXPECT_EQ(request.Block().file, nullptr);
    EXPECT_EQ(request.Block().current, nullptr);
    EXPECT_EQ(request.Block().clipboard, nullptr);
}

TEST(ProfileClose, DoesNothingWithoutAFile)
{
    ProfileRequest request{};
    ProfileClose(request);
    EXPECT_EQ(request.file, nullptr);
}

TEST(ProfileClose, LeavesTheRequestReadyForAnotherFile)
{
    const ScratchFile file;
    file.Write("a\r\n");
    Request request;
    request.Open(file);
    ProfileClose(request.Block());
    request.Open(file);
    EXPECT_EQ(request.Lines(), std::vector<std::string>{"a"});
}

} // namespace
