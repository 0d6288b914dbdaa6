// Libraries that are made up by the test: a module that loads one of them by name finds the test's functions
// in it. For everything that the product asks of libraries that other programs install.
#pragma once

#include "support/ImportHook.h"

#include <map>
#include <mutex>
#include <string>
#include <windows.h>

namespace support {

// Answers LoadLibraryA, GetProcAddress and FreeLibrary of one module for the libraries that were added; all
// others are loaded as without it. One script at a time.
class LibraryScript
{
  public:
    explicit LibraryScript(HMODULE module);
    ~LibraryScript();
    LibraryScript(const LibraryScript&) = delete;
    LibraryScript& operator=(const LibraryScript&) = delete;

    // Makes up the library of this file name, whatever the directory it is asked for in; without entry points
    // until SetEntry.
    void Add(const std::string& fileName);
    // The library cannot be found, even if the machine has it.
    void Remove(const std::string& fileName);
    // A plain function, or null to take the entry point away again.
    template <typename Function>
    void SetEntry(const std::string& fileName, const std::string& entry, Function* function)
    {
        Put(fileName, entry, reinterpret_cast<void*>(function));
    }

    // How often the library was loaded, and how many of the loads were not followed by a release.
    [[nodiscard]] int Loads(const std::string& fileName) const;
    [[nodiscard]] int Held(const std::string& fileName) const;
    // The path by which it was last asked for.
    [[nodiscard]] std::string Path(const std::string& fileName) const;

  private:
    struct Library
    {
        bool isThere = true;
        std::map<std::string, void*> entries = {};
        int loads = 0;
        int releases = 0;
        std::string path = {};
    };

    static HMODULE WINAPI Load(LPCSTR path);
    static FARPROC WINAPI FindEntry(HMODULE module, LPCSTR name);
    static BOOL WINAPI Free(HMODULE module);

    void Put(const std::string& fileName, const std::string& entry, void* function);
    Library* Find(HMODULE module);

    mutable std::mutex m_mutex;
    std::map<std::string, Library>
        m_libraries; // by file name in lower case; the elements' addresses are handles
    Turn<LibraryScript> m_turn;
    ReplacedImport m_load;
    ReplacedImport m_findEntry;
    ReplacedImport m_free;
};

} // namespace support
