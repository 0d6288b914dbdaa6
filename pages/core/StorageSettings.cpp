// Loads and saves the storage agents' switches.
#include "pages/core/StorageSettings.h"

#include "sysaccess/core/RegistryKey.h"

void StorageSettings::Load()
{
    for (std::size_t i = 0; i < storageFeatures.size(); ++i) {
        const StorageFeature& feature = storageFeatures[i];
        DWORD flags = 0;
        CRegistryKey key(HKEY_LOCAL_MACHINE, feature.agentKey);
        RequireMemory(key.GetDword(disableFlagsValue, flags));
        disabled[i] = (flags & feature.disableBit) != 0;
    }
}

void StorageSettings::Save() const
{
    // One variable carries the value through all steps, on purpose: an agent without a value of its own gets
    // the flags of the agent before it, and administrators compare machines by what stands there.
    DWORD flags = 0;
    for (std::size_t i = 0; i < storageFeatures.size(); ++i) {
        const StorageFeature& feature = storageFeatures[i];
        CRegistryKey key(HKEY_LOCAL_MACHINE, feature.agentKey);
        RequireMemory(key.GetDword(disableFlagsValue, flags));
        flags = disabled[i] ? flags | feature.disableBit : flags & ~feature.disableBit;
        key.SetDword(disableFlagsValue, flags);
    }
}
