// The share to which the discovery clients report. Each step can be repeated. Used by the settings of desktop
// management.
#pragma once

inline constexpr char discoveryShareName[] = "VTNDATA";

// Makes the directory for the clients' reports and shares it; true also when it is shared already.
[[nodiscard]] bool AddDiscoveryShare();
// True also when it is not shared. The directory stays.
[[nodiscard]] bool DeleteDiscoveryShare();
