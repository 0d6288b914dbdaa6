// Changes the list in the file server's parameters.
#include "desktop/core/NullSessionShares.h"

#include "desktop/core/DiscoveryShare.h"
#include "sysaccess/core/AgentNames.h"
#include "sysaccess/core/RegistryKey.h"

#include <algorithm>

namespace {

using Names = std::vector<std::string>;

// The accessor reports a list of another type and one that the system reports without a size in the same way.
bool IsOfAnotherType(CRegistryKey& server)
{
    DWORD type = REG_MULTI_SZ;
    RegistryData data;
    DWORD size = 0;
    const DWORD found = RequireMemory(server.QueryValue(nullSessionSharesValue, type, data, size));
    return found == ERROR_SUCCESS && type != REG_MULTI_SZ;
}

// Written back whether or not it changed. A value that is absent or of another type counts as an empty list,
// as it does for the server. One that could not be read is refused: an empty list would be written over the
// entries of others.
template <typename Change>
void ChangeNullSessionShares(Change change)
{
    CRegistryKey server(HKEY_LOCAL_MACHINE, fileServerKey);
    Names shares;
    const DWORD result = server.ReadList(nullSessionSharesValue, shares);
    if (result == ERROR_INVALID_DATA && !IsOfAnotherType(server))
        throw configurationRefused;
    change(shares);
    server.SetMultiString(nullSessionSharesValue, shares);
}

} // namespace

void OpenShareToAnonymous()
{
    ChangeNullSessionShares([](Names& shares) { CRegistryKey::AppendUnique(shares, discoveryShareName); });
}

void CloseShareToAnonymous()
{
    ChangeNullSessionShares([](Names& shares) {
        const auto share = std::find(shares.begin(), shares.end(), discoveryShareName);
        if (share != shares.end())
            shares.erase(share);
    });
}
