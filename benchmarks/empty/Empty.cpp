// The least that a Control Panel library can be: what loading the applet is compared with.
#include <windows.h>

// It needs windows.h before it.
#include <cpl.h>

extern "C" __declspec(dllexport) LONG APIENTRY
    CPlApplet(HWND host, UINT message, LPARAM first, LPARAM second);

LONG APIENTRY CPlApplet(HWND /*host*/, UINT message, LPARAM /*first*/, LPARAM second)
{
    if (message == CPL_INQUIRE)
        *reinterpret_cast<CPLINFO*>(second) = {};
    return message == CPL_INIT || message == CPL_GETCOUNT ? 1 : 0;
}
