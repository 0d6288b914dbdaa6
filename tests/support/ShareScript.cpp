// See the header.
#include "support/ShareScript.h"

#include "imports/ShareAnswer.h"

#include <cstring>
#include <ostream>
#include <stdexcept>

namespace support {
namespace {

std::string Narrow(const wchar_t* text)
{
    if (text == nullptr)
        return "(null)";
    std::string narrow(
        static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_ACP, 0, text, -1, narrow.data(), static_cast<int>(narrow.size()), nullptr,
                        nullptr);
    return narrow.c_str();
}

SharedDirectory Recorded(const SHARE_INFO_2& info)
{
    return {.path = Narrow(info.shi2_path),
            .remark = Narrow(info.shi2_remark),
            .type = info.shi2_type,
            .permissions = info.shi2_permissions,
            .maxUses = info.shi2_max_uses,
            .currentUses = info.shi2_current_uses,
            .password = Narrow(info.shi2_passwd)};
}

std::wstring Wide(const std::string& text)
{
    std::wstring wide(text.size() + 1, L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
    return wide.c_str();
}

} // namespace

std::ostream& operator<<(std::ostream& out, const SharedDirectory& share)
{
    return out << share.path << " (" << share.remark << ") type " << share.type << ", permissions "
               << share.permissions << ", uses " << share.currentUses << " of " << share.maxUses
               << ", password \"" << share.password << '"';
}

ShareScript::ShareScript(HMODULE module)
    : m_turn(this), m_add(module, "NetShareAdd", &AddShare), m_delete(module, "NetShareDel", &DeleteShare),
      m_getInfo(module, "NetShareGetInfo", &GetInfo), m_freeBuffer(module, "NetApiBufferFree", &FreeBuffer)
{
    if (!m_add.IsImported())
        throw std::runtime_error("not imported: NetShareAdd");
}

std::optional<SharedDirectory> ShareScript::Find(const std::string& name) const
{
    const auto share = m_shares.find(name);
    return share == m_shares.end() ? std::nullopt : std::optional(share->second);
}

NET_API_STATUS ShareScript::Begin(const std::string& function, const wchar_t* server,
                                  const std::string& share, DWORD level)
{
    m_log.Add(function + " " + share);
    if (m_failures[function] != NERR_Success)
        return m_failures[function];
    return CheckShareRequest(server, level);
}

NET_API_STATUS ShareScript::AddShare(wchar_t* server, DWORD level, BYTE* buffer, DWORD* /*parameter*/)
{
    ShareScript& self = Turn<ShareScript>::Active();
    const auto& info = *reinterpret_cast<const SHARE_INFO_2*>(buffer);
    const std::string name = Narrow(info.shi2_netname);
    const NET_API_STATUS status = self.Begin("NetShareAdd", server, name, level);
    if (status != NERR_Success)
        return status;
    const bool isNew = self.m_shares.try_emplace(name, Recorded(info)).second;
    return isNew ? NERR_Success : NERR_DuplicateShare;
}

NET_API_STATUS ShareScript::DeleteShare(wchar_t* server, wchar_t* name, DWORD /*reserved*/)
{
    ShareScript& self = Turn<ShareScript>::Active();
    const NET_API_STATUS status = self.Begin("NetShareDel", server, Narrow(name), 2);
    if (status != NERR_Success)
        return status;
    return self.m_shares.erase(Narrow(name)) == 1 ? NERR_Success : NERR_NetNameNotFound;
}

NET_API_STATUS ShareScript::GetInfo(wchar_t* server, wchar_t* name, DWORD level, BYTE** buffer)
{
    ShareScript& self = Turn<ShareScript>::Active();
    const NET_API_STATUS status = self.Begin("NetShareGetInfo", server, Narrow(name), level);
    if (status != NERR_Success)
        return status;
    const std::optional<SharedDirectory> share = self.Find(Narrow(name));
    if (!share)
        return NERR_NetNameNotFound;
    *buffer = DescribeShare({.name = name,
                             .path = Wide(share->path),
                             .remark = Wide(share->remark),
                             .type = share->type,
                             .permissions = share->permissions,
                             .maxUses = share->maxUses});
    ++self.m_buffersLeft;
    return NERR_Success;
}

NET_API_STATUS ShareScript::FreeBuffer(void* buffer)
{
    --Turn<ShareScript>::Active().m_buffersLeft;
    HeapFree(GetProcessHeap(), 0, buffer);
    return NERR_Success;
}

} // namespace support
