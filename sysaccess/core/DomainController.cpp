// The product type in the registry.
#include "sysaccess/core/DomainController.h"

#include "sysaccess/core/AgentNames.h"
#include "sysaccess/core/RegistryKey.h"

#include <cstring>

bool IsDomainController()
try {
    CRegistryKey options(HKEY_LOCAL_MACHINE, productOptionsKey);
    std::string productType;
    const DWORD found = RequireMemory(options.GetString(productTypeValue, productType, REG_SZ, 0));
    return found == ERROR_SUCCESS && _stricmp(productType.c_str(), "Lanmannt") == 0;
} catch (ConfigurationError) {
    return false;
}
