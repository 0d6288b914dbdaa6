// Adds and deletes the discovery share.
#include "desktop/core/DiscoveryShare.h"

#include "sysaccess/core/Environment.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <windows.h>

// It needs windows.h before it.
#include <lm.h>

namespace {

constexpr char reportDirectory[] = "%SystemRoot%\\system32\\vtnmgmt\\vtndata";
constexpr DWORD allPermissions = 127;

// The name with its zero; the calls take a copy that they could write to.
constexpr auto wideShareName = [] {
    std::array<wchar_t, sizeof discoveryShareName> name{};
    std::copy(std::begin(discoveryShareName), std::end(discoveryShareName), name.begin());
    return name;
}();

} // namespace

bool AddDiscoveryShare()
{
    std::array<char, MAX_PATH> directory{};
    if (!ExpandEnvironment(reportDirectory, directory))
        return false;
    CreateDirectoryA(directory.data(), nullptr); // when it is not there afterwards, it cannot be shared
    std::array<wchar_t, MAX_PATH> path{};
    MultiByteToWideChar(CP_ACP, 0, directory.data(), -1, path.data(), static_cast<int>(path.size()));
    auto name = wideShareName;
    wchar_t remark[] = L"CIM Client Share";
    wchar_t password[] = L"";
    SHARE_INFO_2 share{};
    share.shi2_netname = name.data();
    share.shi2_type = STYPE_DISKTREE;
    share.shi2_remark = &remark[0];
    share.shi2_permissions = allPermissions;
    share.shi2_max_uses = SHI_USES_UNLIMITED;
    share.shi2_path = path.data();
    share.shi2_passwd = &password[0];
    const NET_API_STATUS status = NetShareAdd(nullptr, 2, reinterpret_cast<BYTE*>(&share), nullptr);
    return status == NERR_Success || status == NERR_DuplicateShare;
}

bool DeleteDiscoveryShare()
{
    auto name = wideShareName;
    const NET_API_STATUS status = NetShareDel(nullptr, name.data(), 0);
    return status == NERR_Success || status == NERR_NetNameNotFound;
}
