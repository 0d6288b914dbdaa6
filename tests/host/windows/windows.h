// Stands in for Windows' own header in native builds: the types, codes and functions that the window-free
// code and its tests use, with the sizes and values that they have on Windows. What is declared here is
// implemented beside it and kept to Windows' ways by the tests that run on both.
#pragma once

#include <cstdint>

#define WINAPI
#define CALLBACK
#define FALSE 0
#define TRUE 1
#define MAX_PATH 260

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using ULONGLONG = std::uint64_t;
using UINT = unsigned int;
using LONG = std::int32_t;
using LSTATUS = LONG;
using REGSAM = DWORD;
using LPVOID = void*;
using LPCVOID = const void*;
using WCHAR = wchar_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPBOOL = BOOL*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPBYTE = BYTE*;
using LPDWORD = DWORD*;
using PLONG = LONG*;
using HANDLE = void*;
using HMODULE = struct HMODULE__*;
using HKEY = struct HKEY__*;
using PHKEY = HKEY*;
using FARPROC = std::intptr_t (*)();

// --- error codes

#define ERROR_SUCCESS 0L
#define NO_ERROR 0L
#define ERROR_FILE_NOT_FOUND 2L
#define ERROR_PATH_NOT_FOUND 3L
#define ERROR_ACCESS_DENIED 5L
#define ERROR_INVALID_HANDLE 6L
#define ERROR_NOT_ENOUGH_MEMORY 8L
#define ERROR_INVALID_DATA 13L
#define ERROR_OUTOFMEMORY 14L
#define ERROR_NO_MORE_FILES 18L
#define ERROR_WRITE_FAULT 29L
#define ERROR_READ_FAULT 30L
#define ERROR_GEN_FAILURE 31L
#define ERROR_SHARING_VIOLATION 32L
#define ERROR_LOCK_VIOLATION 33L
#define ERROR_BAD_NETPATH 53L
#define ERROR_FILE_EXISTS 80L
#define ERROR_NOT_READY 21L
#define ERROR_NOT_SUPPORTED 50L
#define ERROR_INVALID_PARAMETER 87L
#define ERROR_DISK_FULL 112L
#define ERROR_INVALID_LEVEL 124L
#define ERROR_MOD_NOT_FOUND 126L
#define ERROR_PROC_NOT_FOUND 127L
#define ERROR_DIR_NOT_EMPTY 145L
#define ERROR_ALREADY_EXISTS 183L
#define ERROR_ENVVAR_NOT_FOUND 203L
#define ERROR_FILENAME_EXCED_RANGE 206L
#define ERROR_MORE_DATA 234L
#define ERROR_NO_MORE_ITEMS 259L
#define ERROR_KEY_DELETED 1018L

extern "C" {
DWORD GetLastError();
void SetLastError(DWORD code);

// --- process and modules

DWORD GetCurrentProcessId();
LPSTR GetCommandLineA();
HMODULE GetModuleHandleA(LPCSTR name);
HMODULE LoadLibraryA(LPCSTR path);
BOOL FreeLibrary(HMODULE module);
UINT GetSystemDirectoryA(LPSTR directory, UINT size);
DWORD GetDllDirectoryA(DWORD size, LPSTR directory);
BOOL SetDllDirectoryA(LPCSTR directory);
FARPROC GetProcAddress(HMODULE module, LPCSTR name);
BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value);
DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR value, DWORD size);
DWORD ExpandEnvironmentStringsA(LPCSTR source, LPSTR destination, DWORD size);
DWORD CharUpperBuffA(LPSTR text, DWORD length);
void Sleep(DWORD milliseconds);
DWORD GetTickCount();

#define HEAP_ZERO_MEMORY 8U
HANDLE GetProcessHeap();
LPVOID HeapAlloc(HANDLE heap, DWORD flags, std::size_t size);
BOOL HeapFree(HANDLE heap, DWORD flags, LPVOID memory);

// --- the system

#define MAX_COMPUTERNAME_LENGTH 15

struct OSVERSIONINFOA
{
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    char szCSDVersion[128];
};
using LPOSVERSIONINFOA = OSVERSIONINFOA*;

BOOL GetVersionExA(LPOSVERSIONINFOA version);
BOOL GetComputerNameA(LPSTR name, LPDWORD size);

// --- texts of the ANSI code page

#define CP_ACP 0U
#define CP_UTF8 65001U
#define LOCALE_USER_DEFAULT 0x400U
#define LCMAP_LOWERCASE 0x100U
#define NORM_IGNORECASE 1U
#define CSTR_LESS_THAN 1

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, LPWSTR wide, int size);
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int length, LPSTR text, int size,
                        LPCSTR substitute, LPBOOL isSubstituted);
BOOL IsDBCSLeadByte(BYTE byte);
int LCMapStringW(DWORD locale, DWORD flags, LPCWSTR text, int length, LPWSTR mapped, int size);
int CompareStringW(DWORD locale, DWORD flags, LPCWSTR first, int firstLength, LPCWSTR second,
                   int secondLength);

// --- resources, of which native programs have none

#define MAKEINTRESOURCEA(id) (reinterpret_cast<LPCSTR>(std::uintptr_t{id}))
#define RT_STRING MAKEINTRESOURCEA(6U)
using HRSRC = struct HRSRC__*;
using HGLOBAL = void*;

HRSRC FindResourceA(HMODULE module, LPCSTR name, LPCSTR type);
HGLOBAL LoadResource(HMODULE module, HRSRC resource);
LPVOID LockResource(HGLOBAL loaded);
DWORD SizeofResource(HMODULE module, HRSRC resource);

// --- files

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(std::intptr_t{-1}))
#define INVALID_FILE_SIZE (0xFFFFFFFFU)
#define INVALID_FILE_ATTRIBUTES (0xFFFFFFFFU)
#define INVALID_SET_FILE_POINTER (0xFFFFFFFFU)
#define GENERIC_READ 0x80000000U
#define GENERIC_WRITE 0x40000000U
#define FILE_SHARE_READ 1U
#define FILE_SHARE_WRITE 2U
#define FILE_SHARE_DELETE 4U
#define CREATE_NEW 1U
#define CREATE_ALWAYS 2U
#define OPEN_EXISTING 3U
#define OPEN_ALWAYS 4U
#define TRUNCATE_EXISTING 5U
#define FILE_ATTRIBUTE_READONLY 0x01U
#define FILE_ATTRIBUTE_HIDDEN 0x02U
#define FILE_ATTRIBUTE_DIRECTORY 0x10U
#define FILE_ATTRIBUTE_NORMAL 0x80U
#define FILE_BEGIN 0U
#define FILE_CURRENT 1U
#define FILE_END 2U

struct SECURITY_ATTRIBUTES;
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
struct OVERLAPPED;

HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD attributes, HANDLE pattern);
BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD count, OVERLAPPED* overlapped);
BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD count, OVERLAPPED* overlapped);
DWORD SetFilePointer(HANDLE file, LONG distance, PLONG distanceHigh, DWORD origin);
BOOL SetEndOfFile(HANDLE file);
DWORD GetFileSize(HANDLE file, LPDWORD sizeHigh);
BOOL CloseHandle(HANDLE handle);
BOOL DeleteFileA(LPCSTR path);
DWORD GetFileAttributesA(LPCSTR path);
BOOL SetFileAttributesA(LPCSTR path, DWORD attributes);
DWORD GetTempPathA(DWORD size, LPSTR path);
BOOL CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists);

struct WIN32_FIND_DATAA
{
    DWORD dwFileAttributes;
    char cFileName[MAX_PATH];
};
using LPWIN32_FIND_DATAA = WIN32_FIND_DATAA*;

BOOL CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES security);
BOOL RemoveDirectoryA(LPCSTR path);
HANDLE FindFirstFileA(LPCSTR pattern, LPWIN32_FIND_DATAA found);
BOOL FindNextFileA(HANDLE search, LPWIN32_FIND_DATAA found);
BOOL FindClose(HANDLE search);

// --- profiles

DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR value, DWORD size,
                               LPCSTR path);
UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, int fallback, LPCSTR path);
BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR path);

// --- registry

#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(std::uintptr_t{0x80000001}))
#define HKEY_LOCAL_MACHINE (reinterpret_cast<HKEY>(std::uintptr_t{0x80000002}))
#define REG_NONE 0U
#define REG_SZ 1U
#define REG_EXPAND_SZ 2U
#define REG_BINARY 3U
#define REG_DWORD 4U
#define REG_MULTI_SZ 7U
#define REG_QWORD 11U
#define KEY_QUERY_VALUE 0x1U
#define KEY_SET_VALUE 0x2U
#define KEY_READ 0x20019U
#define KEY_WRITE 0x20006U
#define KEY_ALL_ACCESS 0xF003FU

struct FILETIME;

LSTATUS RegConnectRegistryA(LPCSTR machine, HKEY root, PHKEY result);
LSTATUS RegOpenKeyA(HKEY key, LPCSTR subkey, PHKEY result);
LSTATUS RegOpenKeyExA(HKEY key, LPCSTR subkey, DWORD options, REGSAM access, PHKEY result);
LSTATUS RegCreateKeyA(HKEY key, LPCSTR subkey, PHKEY result);
LSTATUS RegCloseKey(HKEY key);
LSTATUS RegDeleteKeyA(HKEY key, LPCSTR subkey);
LSTATUS RegDeleteTreeA(HKEY key, LPCSTR subkey);
LSTATUS RegEnumKeyA(HKEY key, DWORD index, LPSTR name, DWORD size);
LSTATUS RegEnumKeyExA(HKEY key, DWORD index, LPSTR name, LPDWORD size, LPDWORD reserved, LPSTR className,
                      LPDWORD classSize, FILETIME* lastWrite);
LSTATUS RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size);
LSTATUS RegSetValueExA(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size);
LSTATUS RegDeleteValueA(HKEY key, LPCSTR name);
LSTATUS RegEnumValueA(HKEY key, DWORD index, LPSTR name, LPDWORD size, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD dataSize);

#include "services.h"
}
