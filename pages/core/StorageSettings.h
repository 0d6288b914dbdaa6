// Which features of the storage agents are switched off, without a window.
#pragma once

#include <array>
#include <windows.h>

// One feature: a bit of the REG_DWORD "DisableFlags" in its agent's key below HKEY_LOCAL_MACHINE.
struct StorageFeature
{
    UINT controlId; // the check box that shows it
    const char* agentKey;
    DWORD disableBit;
};

inline constexpr std::size_t storageFeatureCount = 4;

// Every feature, in the order of its check boxes, of loading and of saving.
extern const std::array<StorageFeature, storageFeatureCount> storageFeatures;

// The settings of the storage agents. Load and Save throw ConfigurationError when an agent's key cannot be
// opened.
class StorageSettings
{
  public:
    // Reads every feature; one without a REG_DWORD is not disabled.
    void Load();

    // Sets or clears every feature's bit, keeping all others. Ends at the first refusal; what was written
    // stays.
    void Save() const;

    // BOOL, as check boxes take it: TRUE switches the feature of the same index in storageFeatures off.
    std::array<BOOL, storageFeatureCount> disabled{};
};
