// A library that somebody has put where it does not belong. It leaves its path in the environment when it is
// loaded.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/)
{
    if (reason != DLL_PROCESS_ATTACH)
        return TRUE;
    char path[MAX_PATH] = "";
    GetModuleFileNameA(instance, path, MAX_PATH);
    SetEnvironmentVariableA("VTN_TEST_PLANTED", path);
    return TRUE;
}
