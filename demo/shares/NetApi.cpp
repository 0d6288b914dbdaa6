// netapi32.dll: stands in for Windows' own where that manages no shares. It holds the share functions and
// those others of the library that programs of the made-up machine import.
#include "../support/Error.h"
#include "ShareStore.h"

#include <cstring>
#include <lm.h>
#include <string>

namespace {

// Local calls name no server, or an empty one.
bool IsLocal(const wchar_t* server)
{
    return server == nullptr || *server == L'\0';
}

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

// Copies `text` to `end`, moves `end` past it, and returns where the copy stands.
wchar_t* Place(const std::wstring& text, wchar_t*& end)
{
    wchar_t* const start = end;
    std::memcpy(start, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    end += text.size() + 1;
    return start;
}

// The record and its texts in one block, as callers free it: with one NetApiBufferFree.
NET_API_STATUS DescribeShare(const demo::Share& share, BYTE** buffer)
{
    const size_t characters = share.name.size() + share.path.size() + share.remark.size() + 3;
    void* block = nullptr;
    const auto status =
        NetApiBufferAllocate(static_cast<DWORD>(sizeof(SHARE_INFO_2) + characters * sizeof(wchar_t)), &block);
    if (status != NERR_Success)
        return status;
    auto* const info = static_cast<SHARE_INFO_2*>(block);
    auto* texts = reinterpret_cast<wchar_t*>(info + 1);
    *info = {};
    info->shi2_netname = Place(share.name, texts);
    info->shi2_type = share.type;
    info->shi2_remark = Place(share.remark, texts);
    info->shi2_permissions = share.permissions;
    info->shi2_max_uses = share.maxUses;
    info->shi2_path = Place(share.path, texts);
    *buffer = static_cast<BYTE*>(block);
    return NERR_Success;
}

// Level 2 is the one in use on this machine; servers elsewhere are out of reach.
NET_API_STATUS CheckRequest(const wchar_t* server, DWORD level)
{
    if (!IsLocal(server))
        return ERROR_BAD_NETPATH;
    return level == 2 ? NERR_Success : ERROR_INVALID_LEVEL;
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
    if (const auto refusal = CheckRequest(server, level); refusal != NERR_Success)
        return refusal;
    return demo::CodeOf([&] { return AddShare(*reinterpret_cast<const SHARE_INFO_2*>(info)); });
}

NET_API_STATUS WINAPI NetShareDel(wchar_t* server, wchar_t* name, DWORD)
{
    if (!IsLocal(server))
        return ERROR_BAD_NETPATH;
    return demo::CodeOf([&]() -> DWORD {
        return demo::RemoveShare(TextOrEmpty(name)) ? NERR_Success : NERR_NetNameNotFound;
    });
}

NET_API_STATUS WINAPI NetShareGetInfo(wchar_t* server, wchar_t* name, DWORD level, BYTE** buffer)
{
    if (const auto refusal = CheckRequest(server, level); refusal != NERR_Success)
        return refusal;
    return demo::CodeOf([&]() -> DWORD {
        const auto share = demo::FindShare(TextOrEmpty(name));
        return share ? DescribeShare(*share, buffer) : NERR_NetNameNotFound;
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
