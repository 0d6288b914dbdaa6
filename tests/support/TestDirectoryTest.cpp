// The directories, files and environment variables of a test.
#include "support/TestDirectory.h"

#include <gtest/gtest.h>
#include <optional>

namespace {

using support::FileExists;
using support::NetworkDirectory;
using support::ReadBytes;
using support::SavedVariable;
using support::TestDirectory;
using support::WriteBytes;

constexpr char variable[] = "VTN_TEST_VARIABLE";

// A file that is hard to get rid of, below a directory of its own.
void FillDirectory(const std::string& path)
{
    CreateDirectoryA((path + "\\inner").c_str(), nullptr);
    WriteBytes(path + "\\inner\\file", "text");
    SetFileAttributesA((path + "\\inner\\file").c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
}

TEST(TestDirectory, GoesAwayWithEverythingInIt)
{
    std::string path;
    {
        const TestDirectory directory;
        path = directory.Path();
        FillDirectory(path);
        EXPECT_TRUE(FileExists(directory.File("inner\\file")));
    }
    EXPECT_FALSE(FileExists(path));
}

TEST(TestDirectory, IsAnotherOneEachTime)
{
    const TestDirectory first;
    const TestDirectory second;
    EXPECT_NE(first.Path(), second.Path());
    EXPECT_TRUE(FileExists(first.Path()));
    EXPECT_TRUE(FileExists(second.Path()));
}

TEST(TestFile, GivesBackAllBytes)
{
    const TestDirectory directory;
    const std::string bytes("a\0\r\n\x1A\xFF", 6);
    WriteBytes(directory.File("file"), bytes);
    EXPECT_EQ(ReadBytes(directory.File("file")), bytes);
    WriteBytes(directory.File("file"), "b");
    EXPECT_EQ(ReadBytes(directory.File("file")), "b");
}

TEST(TestFile, IsNothingWhenItIsNotThere)
{
    const TestDirectory directory;
    EXPECT_EQ(ReadBytes(directory.File("file")), std::nullopt);
    EXPECT_FALSE(FileExists(directory.File("file")));
    EXPECT_THROW(WriteBytes(directory.File("absent\\file"), ""), std::runtime_error);
}

TEST(NetworkDirectory, IsReachedByANetworkPathInAnyLetterCase)
{
    const NetworkDirectory network("Share");
    EXPECT_EQ(network.Path().substr(0, 5), "\\\\vtn");
    WriteBytes(network.File("file"), "text");
    std::string upper = network.File("file");
    CharUpperA(upper.data());
    EXPECT_EQ(ReadBytes(upper), "text");
}

TEST(NetworkDirectory, GoesAwayWithEverythingInIt)
{
    std::string path;
    {
        const NetworkDirectory network("share");
        path = network.Path();
        FillDirectory(path);
        EXPECT_TRUE(FileExists(path));
    }
    EXPECT_FALSE(FileExists(path));
}

// What Windows gets. Wine has no such share, so only the name can be looked at here.
TEST(NetworkDirectory, OnWindowsLiesBehindTheAdministrativeShareOfADrive)
{
    const SavedVariable elsewhere("WINECONFIGDIR", "");
    const NetworkDirectory network("share");
    const std::string start = "\\\\localhost\\";
    EXPECT_EQ(network.Path().substr(0, start.size()), start);
    const std::string local =
        network.Path().substr(start.size(), 1) + ":" + network.Path().substr(start.size() + 2);
    EXPECT_TRUE(FileExists(local)) << local;
}

std::optional<std::string> Value()
{
    char value[16] = "";
    const DWORD length = GetEnvironmentVariableA(&variable[0], &value[0], sizeof value);
    return length == 0 ? std::nullopt : std::optional<std::string>(&value[0]);
}

TEST(SavedVariable, HasTheOldValueAfterwards)
{
    const SavedVariable outer(variable, "before");
    {
        const SavedVariable inner(variable, "meanwhile");
        EXPECT_EQ(Value(), "meanwhile");
    }
    EXPECT_EQ(Value(), "before");
}

TEST(SavedVariable, IsAbsentAfterwardsWhenItWasBefore)
{
    {
        const SavedVariable meanwhile(variable, "meanwhile");
    }
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(Value(), std::nullopt);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ENVVAR_NOT_FOUND});
}

} // namespace
