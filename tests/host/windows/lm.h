// Stands in for the header of the server's functions: what the window-free code uses of shares.
#pragma once

#include <windows.h>

using NET_API_STATUS = DWORD;

#define NERR_Success 0U
#define NERR_UnknownDevDir 2116U
#define NERR_DuplicateShare 2118U
#define NERR_NetNameNotFound 2310U

#define STYPE_DISKTREE 0U
#define SHI_USES_UNLIMITED 0xFFFFFFFFU

struct SHARE_INFO_2
{
    LPWSTR shi2_netname;
    DWORD shi2_type;
    LPWSTR shi2_remark;
    DWORD shi2_permissions;
    DWORD shi2_max_uses;
    DWORD shi2_current_uses;
    LPWSTR shi2_path;
    LPWSTR shi2_passwd;
};

extern "C" {
NET_API_STATUS NetShareAdd(LPWSTR server, DWORD level, LPBYTE buffer, LPDWORD parameter);
NET_API_STATUS NetShareDel(LPWSTR server, LPWSTR name, DWORD reserved);
NET_API_STATUS NetShareGetInfo(LPWSTR server, LPWSTR name, DWORD level, LPBYTE* buffer);
NET_API_STATUS NetApiBufferFree(LPVOID buffer);
}
