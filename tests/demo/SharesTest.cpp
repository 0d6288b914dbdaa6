// The shares: made, described and taken away as Windows does, and stored as Windows stores them.
#include "StandIn.h"
#include "support/TestRegistry.h"

#include <gtest/gtest.h>
#include <lm.h>

namespace {

class Shares : public testing::Test
{
  protected:
    NET_API_STATUS Add(const wchar_t* name, const wchar_t* path)
    {
        SHARE_INFO_2 info{};
        std::wstring nameText = name, pathText = path, remark = L"CIM Client Share";
        info.shi2_netname = nameText.data();
        info.shi2_remark = remark.data();
        info.shi2_permissions = 127;
        info.shi2_max_uses = 0xFFFFFFFF;
        info.shi2_path = pathText.data();
        return m_library.Get<decltype(NetShareAdd)>("NetShareAdd")(nullptr, 2, reinterpret_cast<BYTE*>(&info),
                                                                   nullptr);
    }
    NET_API_STATUS Delete(std::wstring name)
    {
        return m_library.Get<decltype(NetShareDel)>("NetShareDel")(nullptr, name.data(), 0);
    }
    NET_API_STATUS GetInfo(std::wstring name, DWORD level, BYTE** buffer)
    {
        return m_library.Get<decltype(NetShareGetInfo)>("NetShareGetInfo")(nullptr, name.data(), level,
                                                                           buffer);
    }

    support::SavedKey m_key{"SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Shares"};
    StandIn m_library{"shares\\netapi32.dll"};
};

TEST_F(Shares, AreStoredAsWindowsStoresThem)
{
    m_key.Clear();

    ASSERT_EQ(Add(L"VTNDATA", L"C:\\windows"), 0u);

    support::ExpectMultiString(m_key, "VTNDATA",
                               {"CSCFlags=0", "MaxUses=4294967295", "Path=C:\\windows", "Permissions=127",
                                "Remark=CIM Client Share", "ShareName=VTNDATA", "Type=0"});
}

TEST_F(Shares, AreDescribedInOneBlock)
{
    m_key.Clear();
    ASSERT_EQ(Add(L"VTNDATA", L"C:\\windows"), 0u);
    BYTE* buffer = nullptr;

    ASSERT_EQ(GetInfo(L"vtndata", 2, &buffer), 0u);

    const auto* const info = reinterpret_cast<const SHARE_INFO_2*>(buffer);
    EXPECT_STREQ(info->shi2_netname, L"VTNDATA");
    EXPECT_STREQ(info->shi2_path, L"C:\\windows");
    EXPECT_STREQ(info->shi2_remark, L"CIM Client Share");
    EXPECT_EQ(info->shi2_permissions, 127u);
    EXPECT_EQ(info->shi2_max_uses, 0xFFFFFFFFu);
    EXPECT_EQ(m_library.Get<decltype(NetApiBufferFree)>("NetApiBufferFree")(buffer), 0u);
}

TEST_F(Shares, AreMadeOnce)
{
    m_key.Clear();
    ASSERT_EQ(Add(L"VTNDATA", L"C:\\windows"), 0u);

    EXPECT_EQ(Add(L"vtndata", L"C:\\windows"), static_cast<NET_API_STATUS>(NERR_DuplicateShare));
}

TEST_F(Shares, NeedADirectory)
{
    m_key.Clear();

    EXPECT_EQ(Add(L"VTNDATA", L"C:\\no such directory"), static_cast<NET_API_STATUS>(NERR_UnknownDevDir));

    support::ExpectAbsent(m_key, "VTNDATA");
}

TEST_F(Shares, AreTakenAwayOnce)
{
    m_key.Clear();
    ASSERT_EQ(Add(L"VTNDATA", L"C:\\windows"), 0u);

    EXPECT_EQ(Delete(L"VTNDATA"), 0u);

    support::ExpectAbsent(m_key, "VTNDATA");
    EXPECT_EQ(Delete(L"VTNDATA"), static_cast<NET_API_STATUS>(NERR_NetNameNotFound));
}

TEST_F(Shares, AnswerForUnknownNamesAndLevelsAsWindowsDoes)
{
    m_key.Clear();
    BYTE* buffer = nullptr;

    EXPECT_EQ(GetInfo(L"NETLOGON", 2, &buffer), static_cast<NET_API_STATUS>(NERR_NetNameNotFound));
    EXPECT_EQ(GetInfo(L"NETLOGON", 77, &buffer), static_cast<NET_API_STATUS>(ERROR_INVALID_LEVEL));
}

} // namespace
