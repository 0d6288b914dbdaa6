// Which features of the storage agents are switched off, without a window.
#pragma once

#include "resources/resource.h"
#include "sysaccess/core/AgentNames.h"

#include <array>
#include <windows.h>

// One feature: a bit of the REG_DWORD "DisableFlags" in its agent's key below HKEY_LOCAL_MACHINE.
struct StorageFeature
{
    UINT controlId; // the check box that shows it
    const char* agentKey;
    DWORD disableBit;
};

// Every feature, in the order of its check boxes, of loading and of saving. Each agent has its own layout of
// the bits: tape support of the SAS agent is 0x4, not 0x1.
inline constexpr auto storageFeatures = std::to_array<StorageFeature>({
    {IDC_STORAGE_FIBRE_TAPE, fibreAgentKey, 0x1},
    {IDC_STORAGE_ARRAY_TAPE, arrayAgentKey, 0x1},
    {IDC_STORAGE_SAS_TAPE, sasAgentKey, 0x4},
    {IDC_STORAGE_ARRAY_PERFORMANCE, arrayAgentKey, 0x2},
});

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
    std::array<BOOL, storageFeatures.size()> disabled{};
};
