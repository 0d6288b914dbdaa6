// A save of a file that another program has open for a moment, as a virus scanner has right after a change.
#include "ProfileFaults.h"
#include "support/FakeClock.h"

#include <numeric>
#include <optional>

namespace {

using profile::Request;
using profile::ScratchFile;
using profile::thisProgram;

constexpr DWORD longestWait = 1000; // milliseconds

class ProfileSaveWait : public testing::Test
{
  protected:
    ProfileSaveWait()
    {
        m_file.Write("a\r\n");
        m_request.Open(m_file);
        EXPECT_EQ(m_request.Execute(PROF_APPEND_LAST, "b"), PROF_OK);
    }

    // Saves while the file's opening is refused with the error for the first `refusals` times.
    std::int16_t SaveRefused(DWORD error, int refusals)
    {
        const auto refuse = support::HookImport<decltype(CreateFileA)>(thisProgram, "CreateFileA",
                                                                       [&](auto original, auto... arguments) {
                                                                           if (refusals-- <= 0)
                                                                               return original(arguments...);
                                                                           SetLastError(error);
                                                                           return INVALID_HANDLE_VALUE;
                                                                       });
        return m_request.Save();
    }

    [[nodiscard]] DWORD Waited() const
    {
        const std::vector<DWORD> sleeps = m_clock.Sleeps();
        return std::accumulate(sleeps.begin(), sleeps.end(), DWORD{0});
    }

    ScratchFile m_file;
    Request m_request;
    support::FakeClock m_clock{thisProgram};
};

TEST_F(ProfileSaveWait, TriesAgainWhileTheFileIsHeldOrLocked)
{
    for (const DWORD error : {DWORD{ERROR_SHARING_VIOLATION}, DWORD{ERROR_LOCK_VIOLATION}}) {
        EXPECT_EQ(SaveRefused(error, 3), PROF_OK);
        EXPECT_EQ(m_file.Content(), "a\r\nb\r\n");
    }
    EXPECT_EQ(m_clock.Sleeps().size(), 6U);
}

TEST_F(ProfileSaveWait, EndsWhenTheFileIsReleased)
{
    std::optional<HANDLE> held = CreateFileA(m_file.Path(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                             nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    m_clock.OnSleep([&](DWORD) {
        if (held && m_clock.Sleeps().size() == 2)
            CloseHandle(*std::exchange(held, std::nullopt));
    });
    EXPECT_EQ(m_request.Save(), PROF_OK);
    EXPECT_EQ(m_file.Content(), "a\r\nb\r\n");
    EXPECT_EQ(m_clock.Sleeps().size(), 2U);
}

TEST_F(ProfileSaveWait, TakesOneSecondAtMost)
{
    EXPECT_EQ(SaveRefused(ERROR_SHARING_VIOLATION, 1000), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(Waited(), longestWait);
    EXPECT_EQ(m_file.Content(), std::nullopt);
}

TEST_F(ProfileSaveWait, ReportsTheLastRefusal)
{
    const auto release = [&](DWORD) { SetLastError(ERROR_SUCCESS); };
    m_clock.OnSleep(release);
    EXPECT_EQ(SaveRefused(ERROR_LOCK_VIOLATION, 1000), ERROR_LOCK_VIOLATION);
}

TEST_F(ProfileSaveWait, IsNotForOtherRefusals)
{
    EXPECT_EQ(SaveRefused(ERROR_ACCESS_DENIED, 1), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Waited(), 0U);
}

} // namespace
