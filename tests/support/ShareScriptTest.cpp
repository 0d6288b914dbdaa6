// The made-up shares, on this program's own calls.
#include "support/ShareScript.h"

#include <gtest/gtest.h>

namespace {

using support::SharedDirectory;
using support::ShareScript;
using Calls = std::vector<std::string>;

constexpr DWORD level = 2;

class ShareScriptTest : public testing::Test
{
  protected:
    NET_API_STATUS AddDocs(DWORD ofLevel = level, wchar_t* server = nullptr)
    {
        wchar_t remark[] = L"Papers";
        wchar_t path[] = L"C:\\docs";
        wchar_t password[] = L"secret";
        SHARE_INFO_2 share{};
        share.shi2_netname = &m_name[0];
        share.shi2_remark = &remark[0];
        share.shi2_permissions = 127;
        share.shi2_max_uses = 5;
        share.shi2_current_uses = 2;
        share.shi2_path = &path[0];
        share.shi2_passwd = &password[0];
        return NetShareAdd(server, ofLevel, reinterpret_cast<BYTE*>(&share), nullptr);
    }
    NET_API_STATUS DeleteDocs() { return NetShareDel(nullptr, &m_name[0], 0); }
    NET_API_STATUS AskForDocs() { return NetShareGetInfo(nullptr, &m_name[0], level, &m_info); }

    ShareScript m_shares{GetModuleHandleA(nullptr)};
    BYTE* m_info = nullptr;
    wchar_t m_name[5] = L"DOCS";
};

TEST_F(ShareScriptTest, KeepsAShareAsItWasAdded)
{
    EXPECT_EQ(AddDocs(), NET_API_STATUS{NERR_Success});
    EXPECT_EQ(m_shares.Find("DOCS"), (SharedDirectory{.path = "C:\\docs",
                                                      .remark = "Papers",
                                                      .type = STYPE_DISKTREE,
                                                      .permissions = 127,
                                                      .maxUses = 5,
                                                      .currentUses = 2,
                                                      .password = "secret"}));
    EXPECT_EQ(m_shares.Find("docs"), std::nullopt);
}

TEST_F(ShareScriptTest, ReportsADuplicateAndKeepsTheShare)
{
    m_shares.Add("DOCS", {.path = "D:\\other"});
    EXPECT_EQ(AddDocs(), NET_API_STATUS{NERR_DuplicateShare});
    EXPECT_EQ(m_shares.Find("DOCS")->path, "D:\\other");
}

TEST_F(ShareScriptTest, SaysThatAShareIsNotThere)
{
    EXPECT_EQ(DeleteDocs(), NET_API_STATUS{NERR_NetNameNotFound});
    EXPECT_EQ(AskForDocs(), NET_API_STATUS{NERR_NetNameNotFound});
    EXPECT_EQ(m_info, nullptr);
}

TEST_F(ShareScriptTest, DeletesAShare)
{
    AddDocs();
    EXPECT_EQ(DeleteDocs(), NET_API_STATUS{NERR_Success});
    EXPECT_EQ(m_shares.Find("DOCS"), std::nullopt);
}

TEST_F(ShareScriptTest, HandsOutBuffersAndCountsThem)
{
    AddDocs();
    EXPECT_EQ(AskForDocs(), NET_API_STATUS{NERR_Success});
    EXPECT_STREQ(reinterpret_cast<const SHARE_INFO_2*>(m_info)->shi2_path, L"C:\\docs");
    EXPECT_EQ(m_shares.BuffersLeft(), 1);
    NetApiBufferFree(m_info);
    EXPECT_EQ(m_shares.BuffersLeft(), 0);
}

TEST_F(ShareScriptTest, KnowsThisMachineAndOneLevelOnly)
{
    wchar_t server[] = L"OTHER";
    EXPECT_EQ(AddDocs(level, &server[0]), NET_API_STATUS{ERROR_BAD_NETPATH});
    EXPECT_EQ(AddDocs(502), NET_API_STATUS{ERROR_INVALID_LEVEL});
    EXPECT_EQ(m_shares.Find("DOCS"), std::nullopt);
}

TEST_F(ShareScriptTest, FailsUntilItShallNotAnyMore)
{
    m_shares.Fail("NetShareAdd", ERROR_ACCESS_DENIED);
    EXPECT_EQ(AddDocs(), NET_API_STATUS{ERROR_ACCESS_DENIED});
    EXPECT_EQ(m_shares.Find("DOCS"), std::nullopt);
    m_shares.Fail("NetShareAdd", NERR_Success);
    EXPECT_EQ(AddDocs(), NET_API_STATUS{NERR_Success});
}

TEST_F(ShareScriptTest, WritesEveryCallDownInItsOrder)
{
    AddDocs();
    m_shares.Fail("NetShareDel", ERROR_ACCESS_DENIED);
    DeleteDocs();
    AskForDocs();
    NetApiBufferFree(m_info);
    EXPECT_EQ(m_shares.Calls(), (Calls{"NetShareAdd DOCS", "NetShareDel DOCS", "NetShareGetInfo DOCS"}));
}

TEST(ShareScript, NeedsAModuleThatShares)
{
    EXPECT_THROW(ShareScript(GetModuleHandleA("kernel32.dll")), std::runtime_error);
}

} // namespace
