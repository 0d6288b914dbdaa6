// The search for libraries while the current directory is out of it.
#include "sysaccess/core/LibrarySearch.h"

#include <array>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

std::string LibraryDirectory()
{
    std::array<char, MAX_PATH> directory{};
    GetDllDirectoryA(MAX_PATH, directory.data());
    return directory.data();
}

class LibrarySearch : public testing::Test
{
  protected:
    ~LibrarySearch() override { SetDllDirectoryA(nullptr); }
};

TEST_F(LibrarySearch, GoesThroughTheSystemDirectoryInstead)
{
    {
        const SearchWithoutCurrentDirectory search;
        EXPECT_TRUE(search.IsInForce());
        EXPECT_EQ(LibraryDirectory(), SystemDirectory());
    }
    EXPECT_EQ(LibraryDirectory(), "");
}

TEST_F(LibrarySearch, LeavesTheDirectoryThatTheProgramHasSet)
{
    for (const char* directory : {"C:\\lib", "L"}) {
        SetDllDirectoryA(directory);
        {
            const SearchWithoutCurrentDirectory search;
            EXPECT_TRUE(search.IsInForce());
            EXPECT_EQ(LibraryDirectory(), directory);
        }
        EXPECT_EQ(LibraryDirectory(), directory);
    }
}

TEST_F(LibrarySearch, IsPutBackByTheOuterOfTwo)
{
    {
        const SearchWithoutCurrentDirectory outer;
        {
            const SearchWithoutCurrentDirectory inner;
            EXPECT_TRUE(inner.IsInForce());
        }
        EXPECT_EQ(LibraryDirectory(), SystemDirectory());
    }
    EXPECT_EQ(LibraryDirectory(), "");
}

} // namespace
