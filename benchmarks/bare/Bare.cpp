// The bare sheet as a Control Panel library.
#include "benchmarks/BareSheet.h"

// It needs windows.h before it.
#include <cpl.h>

extern "C" __declspec(dllexport) LONG APIENTRY
    CPlApplet(HWND host, UINT message, LPARAM first, LPARAM second);

namespace {

HMODULE ThisLibrary()
{
    HMODULE library = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCSTR>(&CPlApplet), &library);
    return library;
}

} // namespace

LONG APIENTRY CPlApplet(HWND host, UINT message, LPARAM /*first*/, LPARAM second)
{
    switch (message) {
    case CPL_INIT:
    case CPL_GETCOUNT:
        return 1;
    case CPL_INQUIRE:
        *reinterpret_cast<CPLINFO*>(second) = {
            .idIcon = IDI_APPLET, .idName = IDS_APPLET_NAME, .idInfo = 2, .lData = 0};
        return 0;
    case CPL_DBLCLK:
        ShowBareSheet(ThisLibrary(), host);
        return 0;
    default:
        return 0;
    }
}
