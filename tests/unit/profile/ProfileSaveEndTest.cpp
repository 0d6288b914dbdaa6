// What is left of a file when the process ends in the middle of a save, before any of its calls of Windows:
// the old lines, or the new ones and perhaps empty lines below.
#include "ProfileFaults.h"

namespace {

using profile::Failing;
using profile::FailurePoint;
using profile::Request;
using profile::SaveIt;
using profile::ScratchFile;
using profile::thisProgram;
using Lines = std::vector<std::string>;

// Lines of some pages, each another one.
std::string ManyLines()
{
    std::string lines;
    for (int i = 0; i < 3000; ++i)
        lines += "net use drive" + std::to_string(i) + "\r\n";
    return lines;
}

struct EndedSave
{
    const char* name;
    std::string before;
    profile::Edit edit;
    std::string after;
};

std::ostream& operator<<(std::ostream& out, const EndedSave& save)
{
    return out << save.name;
}

const std::string many = ManyLines();

const EndedSave endedSaves[] = {
    {"Growing", many, {PROF_INSERT_FIRST, "rem new", "", ""}, "rem new\r\n" + many},
    {"ShrinkingByAnEvenNumber", "even\r\n" + many, {PROF_DELETE_FIRST, "even", "", ""}, many},
    {"ShrinkingByAnOddNumber", "odd\r\n" + many, {PROF_DELETE_FIRST, "odd", "", ""}, many},
    {"ShrinkingByOne", many + "\n", {}, many},
    {"OfTheSameSize", "rem old\r\n" + many, {PROF_SET, "rem old", "", ""}, "rem old\r\n" + many},
    {"ShrinkingToOneLine",
     "a\r\n" + std::string(100, 'x') + "\r\n",
     {PROF_DELETE_FIRST, std::string(100, 'x'), "", ""},
     "a\r\n"},
    {"WithOtherLineEnds", "a\nb\n\r\nc", {PROF_APPEND_LAST, "d", "", ""}, "a\r\nb\r\n\r\nc\r\nd\r\n"},
};

class ProfileSaveEnd : public testing::TestWithParam<EndedSave>
{
  protected:
    // What the file holds after a save that ends before its call number `place`; `isOver` when there are
    // fewer.
    static std::string SaveUpTo(int place, bool& isOver)
    {
        const ScratchFile file;
        file.Write(GetParam().before);
        Request request;
        request.Open(file);
        const profile::Edit& edit = GetParam().edit;
        EXPECT_EQ(request.Execute(edit.operation, edit.key), PROF_OK);
        FailurePoint point(place, Failing::FromThenOn);
        (void)WithFailingSystem(point, request, file.Path(), SaveIt);
        isOver = !point.HasFailed();
        return file.Content().value_or("gone");
    }

    // Whether the text is the edited file with nothing but line ends below.
    static bool IsEdited(const std::string& text)
    {
        const std::string& after = GetParam().after;
        return text.starts_with(after) && text.find_first_not_of("\r\n", after.size()) == std::string::npos;
    }
};

TEST_P(ProfileSaveEnd, LeavesTheOldLinesOrTheNewOnes)
{
    bool isOver = false;
    for (int place = 1; !isOver; ++place) {
        const std::string left = SaveUpTo(place, isOver);
        EXPECT_TRUE(left == GetParam().before || IsEdited(left))
            << "before call " << place << ": " << left.size() << " bytes";
        if (isOver) {
            EXPECT_EQ(left, GetParam().after);
            EXPECT_GT(place, 7); // looked for, opened, measured, written, moved in, cut, measured again
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Saves, ProfileSaveEnd, testing::ValuesIn(endedSaves),
                         [](const auto& save) { return std::string(save.param.name); });

TEST(ProfileSaveInOneCall, FillsUpToTheOldSize)
{
    for (const std::string removed : {"", "odd\r\n", "even\r\n"}) {
        const ScratchFile file;
        file.Write(removed + many);
        Request request;
        request.Open(file);
        EXPECT_EQ(request.Execute(PROF_DELETE_FIRST, removed.substr(0, removed.find('\r'))), PROF_OK);
        Lines written;
        const auto watch = support::HookImport<decltype(WriteFile)>(
            thisProgram, "WriteFile",
            [&](auto original, HANDLE handle, LPCVOID data, DWORD size, LPDWORD count, auto overlapped) {
                written.emplace_back(static_cast<const char*>(data), size);
                return original(handle, data, size, count, overlapped);
            });
        EXPECT_EQ(request.Save(), PROF_OK);
        const std::string ends = removed.empty() ? "" : removed == "odd\r\n" ? "\r\n\r\n\n" : "\r\n\r\n\r\n";
        EXPECT_EQ(written, Lines{many + ends});
        EXPECT_EQ(file.Content(), many);
    }
}

TEST(ProfileSaveInOneCall, WritesNothingWithoutLines)
{
    const ScratchFile file;
    file.Write("a\r\n");
    Request request;
    request.Open(file);
    EXPECT_EQ(request.Execute(PROF_DELETE_FIRST, "a"), PROF_OK);
    int writes = 0;
    const auto fail = support::HookImport<decltype(WriteFile)>(thisProgram, "WriteFile", [&](auto, auto...) {
        ++writes;
        SetLastError(ERROR_DISK_FULL);
        return FALSE;
    });
    EXPECT_EQ(request.Save(), PROF_OK);
    EXPECT_EQ(writes, 0);
    EXPECT_EQ(file.Content(), std::nullopt);
}

} // namespace
