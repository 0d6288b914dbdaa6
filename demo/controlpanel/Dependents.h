// Which services of the made-up machine depend on which. Wine's service manager keeps what a service depends
// on, but lists no dependents; Windows' does.
#pragma once

#include <windows.h>

namespace demo {

// Stands in for EnumDependentServicesA: lists the services whose configuration names the opened one, by name
// alone and whatever `states` says, as the applet asks for them in every state.
BOOL WINAPI ListDependents(SC_HANDLE service, DWORD states, LPENUM_SERVICE_STATUSA list, DWORD size,
                           LPDWORD needed, LPDWORD count);

} // namespace demo
