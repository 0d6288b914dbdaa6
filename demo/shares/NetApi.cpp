// netapi32.dll: stands in for Windows' own where that manages no shares. It holds the share functions and
// those others of the library that programs of the made-up machine import.
#include "../support/Error.h"
#include "ShareStore.h"

#include <cstring>
#include <lm.h>
#include <string>

namespace {

bool IsDirectory(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::wstring TextOrEmpty(const wchar_t* text)
{
    return text == nullptr ? L"" : text;
}

NET_API_STATUS AddShare(const SHARE_INFO_2& info)
{
    const demo::Share share{TextOrEmpty(info.shi2_netname), TextOrEmpty(info.shi2_path),
                            TextOrEmpty(info.shi2_remark),  info.shi2_type,
                            info.shi2_permissions,          info.shi2_max_uses};
    if (share.name.empty())
        return ERROR_INVALID_PARAMETER;
    if (!IsDirectory(share.path))
        return NERR_UnknownDevDir;
    if (demo::FindShare(share.name))
        return NERR_DuplicateShare;
    demo::StoreShare(share);
    return NERR_Success;
}

} // namespace

extern "C" {

NET_API_STATUS WINAPI NetApiBufferAllocate(DWORD size, void** buffer)
{
    *buffer = HeapAlloc(GetProcessHeap(), 0, size);
    return *buffer == nullptr ? ERROR_OUTOFMEMORY : NERR_Success;
}

NET_API_STATUS WINAPI NetApiBufferFree(void* buffer)
{
    HeapFree(GetProcessHeap(), 0, buffer);
    return NERR_Success;
}

NET_API_STATUS WINAPI NetShareAdd(wchar_t* server, DWORD level, BYTE* info, DWORD*)
{
    if (const auto refusal = support::CheckShareRequest(server, level); refusal != NERR_Success)
        return refusal;
    return demo::CodeOf([&] { return AddShare(*reinterpret_cast<const SHARE_INFO_2*>(info)); });
}

NET_API_STATUS WINAPI NetShareDel(wchar_t* server, wchar_t* name, DWORD)
{
    if (const auto refusal = support::CheckShareRequest(server, 2); refusal != NERR_Success)
        return refusal;
    return demo::CodeOf([&]() -> DWORD {
        return demo::RemoveShare(TextOrEmpty(name)) ? NERR_Success : NERR_NetNameNotFound;
    });
}

NET_API_STATUS WINAPI NetShareGetInfo(wchar_t* server, wchar_t* name, DWORD level, BYTE** buffer)
{
    if (const auto refusal = support::CheckShareRequest(server, level); refusal != NERR_Success)
        return refusal;
    return demo::CodeOf([&]() -> DWORD {
        const auto share = demo::FindShare(TextOrEmpty(name));
        if (!share)
            return NERR_NetNameNotFound;
        *buffer = support::DescribeShare(*share);
        return *buffer == nullptr ? ERROR_OUTOFMEMORY : NERR_Success;
    });
}

// Nobody has logged on to a network from this machine, and it uses no other's shares.
NET_API_STATUS WINAPI NetWkstaUserGetInfo(wchar_t*, DWORD, BYTE**)
{
    return NERR_WkstaNotStarted;
}

NET_API_STATUS WINAPI NetUseEnum(wchar_t*, DWORD, BYTE**, DWORD, DWORD*, DWORD*, DWORD*)
{
    return NERR_WkstaNotStarted;
}
}
