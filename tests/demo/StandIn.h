// Loads the built stand-ins from the build's demo directory; the tests of them stand on it.
#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <windows.h>

// Path of a built file, by its path from the demo directory.
[[nodiscard]] std::filesystem::path BuiltFile(const std::string& relative);

// A loaded stand-in library; freed at the end.
class StandIn
{
  public:
    // Throws std::runtime_error when the library does not load.
    explicit StandIn(const std::string& relative);

    // The exported function of that name; throws std::runtime_error when there is none.
    template <typename Function>
    [[nodiscard]] Function* Get(const char* name) const
    {
        const auto function = GetProcAddress(m_library.get(), name);
        if (function == nullptr)
            throw std::runtime_error(std::string("not exported: ") + name);
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(function));
    }

  private:
    struct Freer
    {
        void operator()(HMODULE library) const { FreeLibrary(library); }
    };
    std::unique_ptr<std::remove_pointer_t<HMODULE>, Freer> m_library;
};
