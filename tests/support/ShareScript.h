// The shares of a machine that exists in the test alone: Wine has none. For tests of everything that shares
// or asks for shares.
#pragma once

#include "imports/ImportHook.h"
#include "support/CallLog.h"

#include <map>
#include <optional>
#include <string>
#include <windows.h>

// It needs windows.h before it.
#include <lm.h>

namespace support {

// A share as it was added, its texts in the ANSI code page.
struct SharedDirectory
{
    std::string path;
    std::string remark = {};
    DWORD type = 0;
    DWORD permissions = 0;
    DWORD maxUses = 0;
    DWORD currentUses = 0;
    std::string password = {};

    bool operator==(const SharedDirectory&) const = default;
};

std::ostream& operator<<(std::ostream& out, const SharedDirectory& share);

// Stands in for the share functions that one module imports; one script at a time. Names differ by more than
// letter case, adding a name twice answers 2118, an unknown one 2310, another level than 2 124. Throws
// std::runtime_error when the module does not import NetShareAdd.
class ShareScript
{
  public:
    explicit ShareScript(HMODULE module);
    ShareScript(const ShareScript&) = delete;
    ShareScript& operator=(const ShareScript&) = delete;

    void Add(const std::string& name, SharedDirectory share) { m_shares[name] = std::move(share); }
    // Nothing when there is no such share.
    [[nodiscard]] std::optional<SharedDirectory> Find(const std::string& name) const;

    // From now on `function` answers `status` and does nothing; with NERR_Success it works again.
    void Fail(const std::string& function, NET_API_STATUS status) { m_failures[function] = status; }

    // The share functions that were called, in their order, each as "FUNCTION SHARE".
    [[nodiscard]] std::vector<std::string> Calls() const { return m_log.Calls(); }
    void ForgetCalls() { m_log.Clear(); }
    // Buffers handed out and not freed.
    [[nodiscard]] int BuffersLeft() const { return m_buffersLeft; }

  private:
    static NET_API_STATUS WINAPI AddShare(wchar_t* server, DWORD level, BYTE* buffer, DWORD* parameter);
    static NET_API_STATUS WINAPI DeleteShare(wchar_t* server, wchar_t* name, DWORD reserved);
    static NET_API_STATUS WINAPI GetInfo(wchar_t* server, wchar_t* name, DWORD level, BYTE** buffer);
    static NET_API_STATUS WINAPI FreeBuffer(void* buffer);

    // Writes the call down; what it is to be answered at once, if anything but NERR_Success.
    NET_API_STATUS Begin(const std::string& function, const wchar_t* server, const std::string& share,
                         DWORD level);

    std::map<std::string, SharedDirectory> m_shares;
    std::map<std::string, NET_API_STATUS> m_failures;
    CallLog m_log;
    int m_buffersLeft = 0;
    Turn<ShareScript> m_turn;
    ReplacedImport m_add;
    ReplacedImport m_delete;
    ReplacedImport m_getInfo;
    ReplacedImport m_freeBuffer;
};

} // namespace support
