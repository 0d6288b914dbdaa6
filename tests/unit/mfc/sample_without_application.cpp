// A library whose author forgot the application object, for the tests of the entry point.
#include <afxwin.h>

extern "C" __declspec(dllexport) HINSTANCE ResourceModule();

HINSTANCE ResourceModule()
{
    return AfxGetInstanceHandle();
}
