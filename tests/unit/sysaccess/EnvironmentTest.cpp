// Environment variables in texts, and the computer's name.
#include "sysaccess/core/Environment.h"

#include "imports/ImportHook.h"
#include "support/FailNth.h"
#include "support/ThisProgram.h"
#include "sysaccess/core/ComputerName.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

using support::thisProgram;

using FailExpansion = support::FailNth<"ExpandEnvironmentStringsA", decltype(ExpandEnvironmentStringsA)>;

TEST(Environment, FitsABufferWithItsZero)
{
    std::array<char, 6> exact{};
    EXPECT_TRUE(ExpandEnvironment("12345", exact));
    EXPECT_STREQ(exact.data(), "12345");
    EXPECT_FALSE(ExpandEnvironment("123456", exact));
}

TEST(Environment, IsNotExpandedWhenWindowsRefuses)
{
    std::array<char, 64> buffer{};
    const FailExpansion refuse(thisProgram, 1, 0);
    EXPECT_FALSE(ExpandEnvironment("%windir%", buffer));
}

TEST(Environment, ExpandsATextOfAnyLength)
{
    std::string text = std::string(5000, 'x') + "%windir%";
    ExpandEnvironment(text);
    EXPECT_EQ(text, std::string(5000, 'x') + "C:\\windows");
}

TEST(Environment, LeavesATextWhoseExpansionFails)
{
    for (const int call : {1, 2}) {
        std::string text = "%windir%";
        const FailExpansion refuse(thisProgram, call, 0);
        ExpandEnvironment(text);
        EXPECT_EQ(text, "%windir%") << call;
    }
}

// A variable that another thread makes longer between the two calls.
TEST(Environment, LeavesATextThatGrewMeanwhile)
{
    std::string text = "%windir%";
    const auto grow = support::HookImport<decltype(ExpandEnvironmentStringsA)>(
        thisProgram, "ExpandEnvironmentStringsA", [](auto original, LPCSTR source, LPSTR target, DWORD size) {
            const DWORD needed = original(source, target, size);
            return size == 0 ? needed : size + 1;
        });
    ExpandEnvironment(text);
    EXPECT_EQ(text, "%windir%");
}

class ComputerNameOf : public testing::TestWithParam<const char*>
{
};

TEST_P(ComputerNameOf, IsReadUpToTheLongest)
{
    const auto name = support::HookImport<decltype(GetComputerNameA)>(
        thisProgram, "GetComputerNameA", [](auto, LPSTR buffer, LPDWORD size) -> BOOL {
            const std::size_t length = std::strlen(GetParam());
            const bool fits = length < *size;
            *size = static_cast<DWORD>(fits ? length : length + 1);
            if (fits)
                std::strcpy(buffer, GetParam());
            return fits ? TRUE : FALSE;
        });
    EXPECT_EQ(ComputerName(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Lengths, ComputerNameOf, testing::Values("S", "FOURTEENLETTER", "FIFTEEN-LETTERS"));

TEST(ComputerName, IsEmptyWhenWindowsRefuses)
{
    const support::FailNth<"GetComputerNameA", decltype(GetComputerNameA)> refuse(thisProgram, 1, FALSE);
    EXPECT_EQ(ComputerName(), "");
}

} // namespace
