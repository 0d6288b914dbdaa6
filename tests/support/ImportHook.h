// Replaces a function in a loaded module's import table, so that a test can answer, script or break a call of
// Windows without the product knowing of it:
//
//     auto refuse = support::HookImport<decltype(RegCloseKey)>(module, "RegCloseKey",
//         [](auto original, HKEY key) { original(key); return ERROR_INVALID_HANDLE; });
// The compiler takes an import table's entries for constants and may keep one over several calls of a function, so
// the hooked call must not stand in the function that makes the hook.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <windows.h>

namespace support {

// Address of the slot in `module`'s import table that holds `function`, imported by name from any library; null
// when there is none.
[[nodiscard]] void** FindImport(HMODULE module, const char* function);

// Puts `address` into an import table's slot and returns what was there.
void* ExchangeImport(void** slot, void* address);

template <typename Function, typename Callable> class ImportHook;

// One replaced import of one module. The callable receives the original function first, then the arguments. The
// original comes back with the end of the hook; hooks on one import end in the reverse order of their making,
// as scopes do by themselves. The type of the callable tells hooks apart, so one lambda expression can be
// active once at a time.
template <typename Result, typename... Arguments, typename Callable>
class ImportHook<Result(Arguments...), Callable>
{
  public:
    // Throws std::runtime_error when `module` does not import `function`: a hook that is never called would let
    // a test pass for the wrong reason.
    ImportHook(HMODULE module, const char* function, Callable callable)
        : m_callable(std::move(callable)), m_slot(FindImport(module, function))
    {
        if (m_slot == nullptr)
            throw std::runtime_error(std::string("not imported: ") + function);
        s_active = this;
        m_original = ExchangeImport(m_slot, reinterpret_cast<void*>(&Replacement));
    }
    ~ImportHook()
    {
        ExchangeImport(m_slot, m_original);
        s_active = nullptr;
    }
    ImportHook(const ImportHook&) = delete;
    ImportHook& operator=(const ImportHook&) = delete;

  private:
    static Result Replacement(Arguments... arguments)
    {
        const auto original = reinterpret_cast<Result (*)(Arguments...)>(s_active->m_original);
        return s_active->m_callable(original, arguments...);
    }

    static inline ImportHook* s_active = nullptr;

    Callable m_callable;
    void** m_slot;
    void* m_original = nullptr;
};

// Makes the hook; Function is the decltype of the function that is replaced.
template <typename Function, typename Callable>
[[nodiscard]] ImportHook<Function, Callable> HookImport(HMODULE module, const char* function, Callable callable)
{
    return ImportHook<Function, Callable>(module, function, std::move(callable));
}

} // namespace support
