// The service manager's part of the stand-in's windows.h, which includes it.
#pragma once

using SC_HANDLE = struct SC_HANDLE__*;

#define ERROR_INSUFFICIENT_BUFFER 122L
#define ERROR_DEPENDENT_SERVICES_RUNNING 1051L
#define ERROR_INVALID_SERVICE_CONTROL 1052L
#define ERROR_SERVICE_REQUEST_TIMEOUT 1053L
#define ERROR_SERVICE_DATABASE_LOCKED 1055L
#define ERROR_SERVICE_ALREADY_RUNNING 1056L
#define ERROR_SERVICE_DISABLED 1058L
#define ERROR_SERVICE_DOES_NOT_EXIST 1060L
#define ERROR_SERVICE_CANNOT_ACCEPT_CTRL 1061L
#define ERROR_SERVICE_NOT_ACTIVE 1062L

#define SERVICES_ACTIVE_DATABASEA "ServicesActive"
#define GENERIC_EXECUTE 0x20000000U
#define GENERIC_ALL 0x10000000U
#define STANDARD_RIGHTS_READ 0x20000U
#define STANDARD_RIGHTS_WRITE 0x20000U
#define STANDARD_RIGHTS_EXECUTE 0x20000U
#define SERVICE_QUERY_CONFIG 0x1U
#define SERVICE_CHANGE_CONFIG 0x2U
#define SERVICE_QUERY_STATUS 0x4U
#define SERVICE_ENUMERATE_DEPENDENTS 0x8U
#define SERVICE_START 0x10U
#define SERVICE_STOP 0x20U
#define SERVICE_PAUSE_CONTINUE 0x40U
#define SERVICE_INTERROGATE 0x80U
#define SERVICE_USER_DEFINED_CONTROL 0x100U
#define SERVICE_ALL_ACCESS 0xF01FFU

#define SERVICE_WIN32_OWN_PROCESS 0x10U
#define SERVICE_BOOT_START 0U
#define SERVICE_SYSTEM_START 1U
#define SERVICE_AUTO_START 2U
#define SERVICE_DEMAND_START 3U
#define SERVICE_DISABLED 4U
#define SERVICE_NO_CHANGE 0xFFFFFFFFU
#define SERVICE_ERROR_NORMAL 1U
#define SERVICE_ACCEPT_STOP 1U
#define SERVICE_CONTROL_STOP 1U
#define SERVICE_STOPPED 1U
#define SERVICE_START_PENDING 2U
#define SERVICE_STOP_PENDING 3U
#define SERVICE_RUNNING 4U
#define SERVICE_CONTINUE_PENDING 5U
#define SERVICE_PAUSE_PENDING 6U
#define SERVICE_PAUSED 7U
#define SERVICE_ACTIVE 1U
#define SERVICE_INACTIVE 2U
#define SERVICE_STATE_ALL 3U

struct SERVICE_STATUS
{
    DWORD dwServiceType;
    DWORD dwCurrentState;
    DWORD dwControlsAccepted;
    DWORD dwWin32ExitCode;
    DWORD dwServiceSpecificExitCode;
    DWORD dwCheckPoint;
    DWORD dwWaitHint;
};
using LPSERVICE_STATUS = SERVICE_STATUS*;

struct QUERY_SERVICE_CONFIGA
{
    DWORD dwServiceType;
    DWORD dwStartType;
    DWORD dwErrorControl;
    LPSTR lpBinaryPathName;
    LPSTR lpLoadOrderGroup;
    DWORD dwTagId;
    LPSTR lpDependencies;
    LPSTR lpServiceStartName;
    LPSTR lpDisplayName;
};
using LPQUERY_SERVICE_CONFIGA = QUERY_SERVICE_CONFIGA*;

struct ENUM_SERVICE_STATUSA
{
    LPSTR lpServiceName;
    LPSTR lpDisplayName;
    SERVICE_STATUS ServiceStatus;
};
using LPENUM_SERVICE_STATUSA = ENUM_SERVICE_STATUSA*;

struct GENERIC_MAPPING
{
    DWORD GenericRead;
    DWORD GenericWrite;
    DWORD GenericExecute;
    DWORD GenericAll;
};

void MapGenericMask(LPDWORD access, GENERIC_MAPPING* mapping);
SC_HANDLE OpenSCManagerA(LPCSTR machine, LPCSTR database, DWORD access);
SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access);
BOOL CloseServiceHandle(SC_HANDLE handle);
BOOL QueryServiceStatus(SC_HANDLE service, LPSERVICE_STATUS status);
BOOL QueryServiceConfigA(SC_HANDLE service, LPQUERY_SERVICE_CONFIGA config, DWORD size, LPDWORD needed);
BOOL EnumDependentServicesA(SC_HANDLE service, DWORD state, LPENUM_SERVICE_STATUSA list, DWORD size,
                            LPDWORD needed, LPDWORD count);
BOOL StartServiceA(SC_HANDLE service, DWORD count, LPCSTR* arguments);
BOOL ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status);
BOOL ChangeServiceConfigA(SC_HANDLE service, DWORD type, DWORD startType, DWORD errorControl, LPCSTR path,
                          LPCSTR group, LPDWORD tag, LPCSTR dependencies, LPCSTR account, LPCSTR password,
                          LPCSTR displayName);
