// The numbers of the profile engine's interface: callers outside of this program would be built with them.
#include "ProfileFixture.h"

#include <algorithm>

namespace {

TEST(ProfileNumbers, OfStatuses)
{
    EXPECT_EQ(PROF_OK, 0);
    EXPECT_EQ(PROF_NO_MEMORY, 8);
    EXPECT_EQ(static_cast<std::uint16_t>(PROF_TOO_LONG), 0xF000);
    EXPECT_EQ(static_cast<std::uint16_t>(PROF_NO_CURRENT), 0xF003);
    EXPECT_EQ(static_cast<std::uint16_t>(PROF_EMPTY), 0xF004);
    EXPECT_EQ(static_cast<std::uint16_t>(PROF_NOT_OPEN), 0xF005);
    EXPECT_EQ(static_cast<std::uint16_t>(PROF_KEY_NOT_FOUND), 0xF100);
    EXPECT_EQ(static_cast<std::uint16_t>(PROF_SECTION_NOT_FOUND), 0xF101);
}

TEST(ProfileNumbers, OfOperations)
{
    constexpr std::uint16_t operations[] = {
        PROF_LIST_PREPEND,   PROF_LIST_APPEND,        PROF_FIND_FIRST,        PROF_FIND_NEXT,
        PROF_DELETE_PAIR,    PROF_REPLACE_CURRENT,    PROF_REMOVE_FROM_VALUE, PROF_SET,
        PROF_SECTION_SET,    PROF_SECTION_ADD,        PROF_SECTION_GET,       PROF_SECTION_GET_NEXT,
        PROF_SECTION_DELETE, PROF_SECTION_DELETE_KEY, PROF_SECTION_COPY,      PROF_SECTION_APPEND_VALUE,
        PROF_INSERT_FIRST,   PROF_APPEND_LAST,        PROF_PASTE_AT_END,      PROF_INSERT_AFTER,
        PROF_INSERT_BEFORE,  PROF_INSERT_RAW_AFTER,   PROF_DELETE_CURRENT,    PROF_SET_RAW_CURRENT,
        PROF_DELETE_FIRST,   PROF_ADD_SECTION_AT_END, PROF_FIND_SECTION};
    constexpr std::uint16_t numbers[] = {1,  2,  3,  4,  5,  6,  7,  8,  10, 11, 13, 14, 15, 16,
                                         17, 18, 20, 21, 23, 40, 41, 42, 50, 51, 52, 60, 61};
    EXPECT_TRUE(std::ranges::equal(operations, numbers));
}

TEST(ProfileNumbers, OfModesAndKinds)
{
    EXPECT_EQ(PROF_SECTIONED, 0x01);
    EXPECT_EQ(PROF_COMPACT, 0x04);
    EXPECT_EQ(PROF_CREATE, 0x80);
    EXPECT_EQ(PROF_KIND_COMMENT, 1U);
    EXPECT_EQ(PROF_KIND_SECTION, 2U);
    EXPECT_EQ(PROF_KIND_ENTRY, 4U);
    EXPECT_EQ(PROF_KIND_BLANK, 17U);
}

} // namespace
