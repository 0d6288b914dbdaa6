// Stands in for HTML Help: keeps the requests of a module instead of opening help windows.
#pragma once

#include "imports/ImportHook.h"
#include "support/Mutex.h"

#include <mutex>
#include <string>
#include <vector>
#include <windows.h>

namespace support {

// One request for help as it arrived at the library's entry.
struct HelpRequest
{
    HWND owner = nullptr;
    std::string file;
    UINT command = 0;
    std::string topic;

    bool operator==(const HelpRequest&) const = default;
};

std::ostream& operator<<(std::ostream& out, const HelpRequest& request);

// Answers the module's loading of HTML Help and its entry, ordinal 14; one recorder at a time. A module keeps
// the entry that it has found, so the recorder must be there before its first request.
class HelpRecorder
{
  public:
    explicit HelpRecorder(HMODULE module);
    HelpRecorder(const HelpRecorder&) = delete;
    HelpRecorder& operator=(const HelpRecorder&) = delete;

    // From now on the library, or its entry, is not to be found.
    void RemoveLibrary() { m_hasLibrary = false; }
    void RemoveEntry() { m_hasEntry = false; }
    void Restore() { m_hasLibrary = m_hasEntry = true; }

    // The requests so far, in their order, and the libraries that the module has asked for.
    [[nodiscard]] std::vector<HelpRequest> Requests() const;
    [[nodiscard]] std::vector<std::string> LoadedLibraries() const;
    void Clear();

  private:
    static HMODULE WINAPI Load(LPCSTR name);
    static FARPROC WINAPI FindEntry(HMODULE library, LPCSTR name);
    static HWND WINAPI Show(HWND owner, LPCSTR file, UINT command, DWORD_PTR topic);

    mutable Mutex m_mutex;
    std::vector<HelpRequest> m_requests;
    std::vector<std::string> m_libraries;
    bool m_hasLibrary = true;
    bool m_hasEntry = true;
    Turn<HelpRecorder> m_turn;
    ReplacedImport m_loadLibrary;
    ReplacedImport m_getProcAddress;
};

} // namespace support
