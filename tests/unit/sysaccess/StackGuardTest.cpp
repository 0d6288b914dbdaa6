// A buffer that is written beyond its end.
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <windows.h>

extern "C" std::uintptr_t __stack_chk_guard;

namespace {

[[gnu::noinline]] void WriteToBuffer(std::size_t length)
{
    char buffer[16] = {};
    auto* volatile place = &buffer[0];
    for (std::size_t i = 0; i < length; ++i)
        place[i] = 'x';
}

TEST(StackGuard, LetsABufferBeFilled)
{
    WriteToBuffer(16);
}

TEST(StackGuard, EndsTheProcessWhenABufferIsOverrun)
{
    EXPECT_EXIT(WriteToBuffer(48), testing::ExitedWithCode(static_cast<int>(STATUS_STACK_BUFFER_OVERRUN)),
                "");
}

TEST(StackGuard, HasAValueThatNoTextCanHold)
{
    EXPECT_NE(__stack_chk_guard, 0U);
    EXPECT_EQ(__stack_chk_guard & 0xFF, 0U);
}

} // namespace
