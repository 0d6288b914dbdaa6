// The functions of Windows that the applet calls and that can fail, with the errors that they answer: one row
// for each, from which the sweeps take everything that they know of it.
#pragma once

#include "machine/Watch.h"

#include <io.h>
#include <map>
#include <sys/stat.h>
#include <vector>

// They need windows.h before them.
#include <lm.h>
#include <prsht.h>

namespace sweep {

// All watches at once; the functions are the applet's own again when it goes.
template <typename... Watches>
class WatchSet : private Watches...
{
  public:
    WatchSet(HMODULE module, CallRecorder& recorder) : Watches(module, recorder)... {}

    // The errors that each function is made to answer.
    [[nodiscard]] static std::map<std::string, std::vector<DWORD>> Codes()
    {
        return {{Watches::Name(), Watches::Codes()}...};
    }
};

// clang-format off: tables
#define VTN_WATCH(function, says, role, ...) Watch<#function, decltype(function), says, role, __VA_ARGS__>
// Of the registry, services, shares and files: what settings are read from and written to.
using SettingsImports = WatchSet<VTN_WATCH(RegOpenKeyA, Says::Code, Role::Opens, 2, 5, 8),
                                 VTN_WATCH(RegOpenKeyExA, Says::Code, Role::Opens, 2, 5),
                                 VTN_WATCH(RegQueryValueExA, Says::Code, Role::Asks, 2, 5, 8, 234),
                                 VTN_WATCH(RegEnumKeyA, Says::Code, Role::Asks, 5, 8, 234),
                                 VTN_WATCH(RegSetValueExA, Says::Code, Role::Changes, 5, 8),
                                 VTN_WATCH(RegDeleteValueA, Says::Code, Role::Changes, 2, 5),
                                 VTN_WATCH(RegDeleteKeyA, Says::Code, Role::Changes, 2, 5),
                                 VTN_WATCH(RegCloseKey, Says::Code, Role::Closes, 5),
                                 VTN_WATCH(OpenSCManagerA, Says::Null, Role::Opens, 5, 8),
                                 VTN_WATCH(OpenServiceA, Says::Null, Role::Opens, 5, 1060),
                                 VTN_WATCH(QueryServiceStatus, Says::Null, Role::Asks, 5),
                                 VTN_WATCH(QueryServiceConfigA, Says::Null, Role::Asks, 5, 8),
                                 VTN_WATCH(EnumDependentServicesA, Says::Null, Role::Asks, 5, 234),
                                 VTN_WATCH(StartServiceA, Says::Null, Role::Changes, 2, 5, 1053, 1056, 1058),
                                 VTN_WATCH(ControlService, Says::Null, Role::Changes, 5, 1053, 1061),
                                 VTN_WATCH(ChangeServiceConfigA, Says::Null, Role::Changes, 5, 1060),
                                 VTN_WATCH(CloseServiceHandle, Says::Null, Role::Closes, 5),
                                 VTN_WATCH(NetShareAdd, Says::Code, Role::Changes, 5, 8, 2118),
                                 VTN_WATCH(NetShareDel, Says::Code, Role::Changes, 5, 2310),
                                 VTN_WATCH(NetShareGetInfo, Says::Code, Role::Asks, 5, 2310),
                                 VTN_WATCH(CreateFileA, Says::MinusOne, Role::Opens, 2, 5, 8, 32),
                                 VTN_WATCH(ReadFile, Says::Null, Role::Asks, 5, 8),
                                 VTN_WATCH(WriteFile, Says::Null, Role::Changes, 5, 8),
                                 VTN_WATCH(SetFilePointer, Says::MinusOne, Role::Asks, 5),
                                 VTN_WATCH(SetEndOfFile, Says::Null, Role::Changes, 5),
                                 VTN_WATCH(GetFileSize, Says::MinusOne, Role::Asks, 5),
                                 VTN_WATCH(CloseHandle, Says::Null, Role::Closes, 5),
                                 VTN_WATCH(DeleteFileA, Says::Null, Role::Changes, 2, 5, 32),
                                 VTN_WATCH(CopyFileA, Says::Null, Role::Changes, 2, 5, 32),
                                 VTN_WATCH(CreateDirectoryA, Says::Null, Role::Changes, 5),
                                 VTN_WATCH(SetFileAttributesA, Says::Null, Role::Changes, 2, 5),
                                 VTN_WATCH(WritePrivateProfileStringA, Says::Null, Role::Changes, 5, 32),
                                 VTN_WATCH(_access, Says::MinusOne, Role::Asks, 2, 5),
                                 VTN_WATCH(_chmod, Says::MinusOne, Role::Changes, 2, 5)>;
using OtherImports = WatchSet<VTN_WATCH(ExpandEnvironmentStringsA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(GetEnvironmentVariableA, Says::Null, Role::Asks, 2),
                              VTN_WATCH(GetComputerNameA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(GetVersionExA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(GetModuleFileNameA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(GetFileVersionInfoSizeA, Says::Null, Role::Asks, 2),
                              VTN_WATCH(GetFileVersionInfoA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(VerQueryValueA, Says::Null, Role::Asks, 2),
                              VTN_WATCH(GetDateFormatA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(GetTimeFormatA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(OpenMutexA, Says::Null, Role::Opens, 2, 5),
                              VTN_WATCH(GetSystemDirectoryA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(GetDllDirectoryA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(SetDllDirectoryA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(LoadLibraryA, Says::Null, Role::Opens, 2, 5, 8),
                              VTN_WATCH(GetProcAddress, Says::Null, Role::Asks, 2),
                              VTN_WATCH(FreeLibrary, Says::Null, Role::Closes, 5),
                              VTN_WATCH(LoadStringA, Says::Null, Role::Asks, 8),
                              VTN_WATCH(SetWindowsHookExA, Says::Null, Role::Opens, 8),
                              VTN_WATCH(UnhookWindowsHookEx, Says::Null, Role::Closes, 5),
                              VTN_WATCH(PropertySheetA, Says::MinusOne, Role::Asks, 8),
                              VTN_WATCH(CreateDialogParamA, Says::Null, Role::Asks, 8)>;
#undef VTN_WATCH
// clang-format on

// Everything that is watched.
class WatchedImports : private SettingsImports, private OtherImports
{
  public:
    WatchedImports(HMODULE module, CallRecorder& recorder)
        : SettingsImports(module, recorder), OtherImports(module, recorder)
    {
    }

    // The errors that each function is made to answer.
    [[nodiscard]] static std::map<std::string, std::vector<DWORD>> Codes()
    {
        auto codes = SettingsImports::Codes();
        codes.merge(OtherImports::Codes());
        return codes;
    }
};

} // namespace sweep
