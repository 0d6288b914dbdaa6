// The thresholds that the agents keep in the registry, and how they are cleared. For the SNMP Settings page,
// which stops the agents meanwhile.
#pragma once

#include <array>
#include <windows.h>

inline constexpr std::size_t thresholdKeyCount = 5;

// Keys of the thresholds below HKEY_LOCAL_MACHINE, in the order in which they are deleted.
extern const std::array<const char*, thresholdKeyCount> thresholdKeys;

// For each key the Win32 code of its deletion.
using ThresholdCodes = std::array<LSTATUS, thresholdKeyCount>;

// Deletes the keys; the code of one that is not there is 0. One with subkeys is refused.
[[nodiscard]] ThresholdCodes DeleteThresholds();

// Whether the user gets the message that the thresholds have been cleared.
[[nodiscard]] bool AreThresholdsCleared(const ThresholdCodes& codes);
