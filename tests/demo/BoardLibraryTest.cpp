// The board library: a record goes in and comes out, and a reset takes its time.
#include "demo/board/BoardLibrary.h"
#include "StandIn.h"
#include "support/TestRegistry.h"
#include "support/UiThread.h"

#include <gtest/gtest.h>

namespace {

class Board : public testing::Test
{
  protected:
    DWORD Read() { return m_library.Get<decltype(Rb4CpReadData)>("Rb4CpReadData")(&m_data); }
    DWORD Write(const BoardData& data)
    {
        return m_library.Get<decltype(Rb4CpWriteData)>("Rb4CpWriteData")(&data);
    }

    support::SavedKey m_key{"SOFTWARE\\Norvale Demo\\Board"};
    StandIn m_library{"RB4USER.DLL"};
    BoardData m_data{};
};

TEST_F(Board, AnswersWithItsStoredSettings)
{
    m_key.Clear();
    m_key.SetDword("Battery", 2);
    m_key.SetDword("RemoteAlerting", 1);

    ASSERT_EQ(Read(), 0u);

    EXPECT_EQ(m_data.battery, 2u);
    EXPECT_EQ(m_data.remoteAlerting, 1u);
    EXPECT_EQ(m_data.serverResetPending, 0u);
    EXPECT_EQ(m_data.resetRequest, 0u);
}

TEST_F(Board, StoresWhatIsWritten)
{
    m_key.Clear();

    ASSERT_EQ(Write({.battery = 1, .remoteAlerting = 0, .serverResetPending = 1, .resetRequest = 0}), 0u);

    support::ExpectDword(m_key, "Battery", 1);
    support::ExpectDword(m_key, "RemoteAlerting", 0);
    support::ExpectDword(m_key, "ServerResetPending", 1);
    EXPECT_EQ(Read(), 0u);
}

TEST_F(Board, IsSilentUntilItsResetIsOver)
{
    m_key.Clear();
    m_key.SetDword("ResetSeconds", 1);

    ASSERT_EQ(Write({.battery = 1, .remoteAlerting = 0, .serverResetPending = 0, .resetRequest = 1}), 0u);

    EXPECT_EQ(Read(), static_cast<DWORD>(ERROR_NOT_READY));
    EXPECT_EQ(Write({}), static_cast<DWORD>(ERROR_NOT_READY));
    EXPECT_TRUE(support::WaitUntil([this] { return Read() == 0; }));
    EXPECT_EQ(m_data.battery, 1u);
}

TEST_F(Board, IsAbsentWithoutItsKey)
{
    m_key.Delete();

    EXPECT_EQ(Read(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Write({}), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_FALSE(m_key.Exists());
}

} // namespace
