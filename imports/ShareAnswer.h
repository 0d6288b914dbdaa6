// What the share functions of Windows answer, for those that stand in for them: the tests' script and the
// made-up machine's library. Level 2 is the one that the applet asks for.
#pragma once

#include "imports/TextsBehind.h"

#include <string>
#include <windows.h>

// It needs windows.h before it.
#include <lm.h>

namespace support {

struct Share
{
    std::wstring name;
    std::wstring path;
    std::wstring remark;
    DWORD type = STYPE_DISKTREE;
    DWORD permissions = 0; // 127 is all
    DWORD maxUses = SHI_USES_UNLIMITED;
};

// Whether a call is for this machine and in a level that is known: NERR_Success, or the code to answer.
// Servers elsewhere are out of reach.
[[nodiscard]] inline NET_API_STATUS CheckShareRequest(const wchar_t* server, DWORD level)
{
    if (server != nullptr && *server != L'\0')
        return ERROR_BAD_NETPATH;
    return level == 2 ? NERR_Success : ERROR_INVALID_LEVEL;
}

// The record and its texts in one block of the process heap, as callers free it; null when there is no
// memory.
[[nodiscard]] inline BYTE* DescribeShare(const Share& share)
{
    const std::size_t characters = share.name.size() + share.path.size() + share.remark.size() + 3;
    void* const block =
        HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof(SHARE_INFO_2) + characters * sizeof(wchar_t));
    if (block == nullptr)
        return nullptr;
    auto* const info = static_cast<SHARE_INFO_2*>(block);
    TextsBehind<wchar_t> texts(info + 1);
    info->shi2_netname = texts.Put(share.name);
    info->shi2_type = share.type;
    info->shi2_remark = texts.Put(share.remark);
    info->shi2_permissions = share.permissions;
    info->shi2_max_uses = share.maxUses;
    info->shi2_path = texts.Put(share.path);
    return static_cast<BYTE*>(block);
}

} // namespace support
