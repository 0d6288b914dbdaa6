// How long a service is waited for that starts or stops.
#pragma once

#include <functional>
#include <windows.h>

// The longest sleep between two looks at a service, and the sleep when its check point has not moved; in
// milliseconds.
inline constexpr DWORD longestServiceSleep = 2500;
// How often a service is looked at that promises nothing better.
inline constexpr ULONGLONG usualWaitRounds = 10;
// A new check point with a longer wait hint allows this many times the hint from then on.
inline constexpr ULONGLONG waitHintFactor = 3;

// Waits for a service to be SERVICE_RUNNING or SERVICE_STOPPED, as `wantedState` says; any other is not
// waited for. `status` is the last one known and becomes the last one seen. Waits only through the pending
// state on the way and for as long as the service's wait hint and check points allow. Calls `beforeSleep` in
// each round. True when the state is reached.
[[nodiscard]] bool WaitForServiceState(SC_HANDLE service, SERVICE_STATUS& status, DWORD wantedState,
                                       const std::function<void()>& beforeSleep);
