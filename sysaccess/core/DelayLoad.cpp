// Libraries of Windows that most runs never need are loaded with the first call of one of their functions.
// The linker's helper loads them by their bare names; these two hooks, which it calls, have it look nowhere
// but in the system directory and keep a call whose library is missing from ending the process.
#include "sysaccess/core/LibrarySearch.h"

#include <cstring>

// It needs windows.h before it.
#include <delayimp.h>

namespace {

// Stand-ins for functions that cannot be loaded: network calls return their error, all others FALSE.
DWORD WINAPI FailNetworkCall()
{
    return ERROR_MOD_NOT_FOUND;
}

BOOL WINAPI FailCall()
{
    SetLastError(ERROR_MOD_NOT_FOUND);
    return FALSE;
}

FARPROC StandInFor(const DelayLoadInfo& call)
{
    const bool isNetworkCall = std::strcmp(call.szDll, "netapi32.dll") == 0;
    return isNetworkCall ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&FailNetworkCall))
                         : reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&FailCall));
}

// Where the library cannot be loaded, a module stands in that lacks its functions, the program's: the helper
// would otherwise look for the library by its bare name, and now asks for a stand-in for the function.
FARPROC WINAPI BeforeLoading(unsigned notification, DelayLoadInfo* call)
{
    if (notification != dliNotePreLoadLibrary)
        return nullptr;
    const HMODULE library = LoadSystemLibrary(call->szDll).Release();
    return reinterpret_cast<FARPROC>(library == nullptr ? GetModuleHandleA(nullptr) : library);
}

FARPROC WINAPI AfterFailure(unsigned notification, DelayLoadInfo* call)
{
    return notification == dliFailGetProc ? StandInFor(*call) : nullptr;
}

} // namespace

PfnDliHook __pfnDliNotifyHook2 = &BeforeLoading;
PfnDliHook __pfnDliFailureHook2 = &AfterFailure;
