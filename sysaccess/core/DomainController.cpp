// The product type in the registry.
#include "sysaccess/core/DomainController.h"

#include "sysaccess/core/AgentNames.h"
#include "sysaccess/core/RegistryKey.h"

#include <cstring>

bool IsDomainController()
try {
    CRegistryKey options(HKEY_LOCAL_MACHINE, productOptionsKey);
    std::string productType;
    return options.GetString(productTypeValue, productType, REG_SZ, 0) == ERROR_SUCCESS &&
           _stricmp(productType.c_str(), "Lanmannt") == 0;
} catch (ConfigurationError) {
    return false;
}
