// Replaces a function in a loaded module's import table, so that a test can answer, script or break a call of
// Windows without the product knowing of it:
//
//     auto refuse = support::HookImport<decltype(RegCloseKey)>(module, "RegCloseKey",
//         [](auto original, HKEY key) { original(key); return ERROR_INVALID_HANDLE; });
// The compiler takes an import table's entries for constants and may keep one over several calls of a
// function, so the hooked call must not stand in the function that makes the hook.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>

struct ImgDelayDescr;

namespace support {

// The descriptors of the libraries that `module` loads when it first calls one of their functions.
[[nodiscard]] std::vector<const ImgDelayDescr*> DelayedLibraries(HMODULE module);

// Address of the slot in `module`'s import table that holds `function`, imported by name from any library;
// null when there is none. A library that is loaded on demand is loaded for it.
[[nodiscard]] void** FindImport(HMODULE module, const char* function);

// Puts `address` into an import table's slot and returns what was there.
void* ExchangeImport(void** slot, void* address);

// An import table's slot that holds another address for the life of this object: what scripts of many
// functions are made of. A module that does not import the function is left as it is.
class ReplacedImport
{
  public:
    template <typename Function>
    ReplacedImport(HMODULE module, const char* function, Function* replacement)
        : ReplacedImport(module, function, reinterpret_cast<void*>(replacement))
    {
    }
    ReplacedImport(HMODULE module, const char* function, void* replacement);
    ~ReplacedImport();
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;

    [[nodiscard]] bool IsImported() const { return m_slot != nullptr; }

    // What the slot held before; null when the module does not import the function.
    template <typename Function>
    [[nodiscard]] Function* Original() const
    {
        return reinterpret_cast<Function*>(m_original);
    }

  private:
    void** m_slot;
    void* m_original = nullptr;
};

// What the functions in an import table need to find their object: the one object of its class at a time.
// Declare it before the ReplacedImport members, so that a call always finds its object.
template <typename Object>
class Turn
{
  public:
    explicit Turn(Object* object)
    {
        if (s_active != nullptr)
            throw std::logic_error(
                "another object of this kind is active: one lambda expression or script at a time");
        s_active = object;
    }
    ~Turn() { s_active = nullptr; }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    [[nodiscard]] static Object& Active() { return *s_active; }

  private:
    static inline Object* s_active = nullptr;
};

template <typename Function, typename Callable>
class ImportHook;

// One replaced import of one module. The callable receives the original function first, then the arguments.
// The original comes back with the end of the hook; hooks on one import end in the reverse order of their
// making, as scopes do by themselves. The type of the callable distinguishes hooks, so one lambda expression
// can be active once at a time.
template <typename Result, typename... Arguments, typename Callable>
class ImportHook<Result(Arguments...), Callable>
{
  public:
    // Throws std::runtime_error when `module` does not import `function`, since a hook that is never called
    // would let a test pass for the wrong reason, and std::logic_error when the same lambda expression is
    // active.
    ImportHook(HMODULE module, const char* function, Callable callable)
        : m_callable(std::move(callable)), m_turn(this), m_import(module, function, &Replacement)
    {
        if (!m_import.IsImported())
            throw std::runtime_error(std::string("not imported: ") + function);
    }
    ImportHook(const ImportHook&) = delete;
    ImportHook& operator=(const ImportHook&) = delete;

  private:
    using Function = Result(Arguments...);

    static Result Replacement(Arguments... arguments)
    {
        ImportHook& hook = Turn<ImportHook>::Active();
        return hook.m_callable(hook.m_import.template Original<Function>(), arguments...);
    }

    Callable m_callable;
    Turn<ImportHook> m_turn;
    ReplacedImport m_import;
};

// Makes the hook; Function is the decltype of the function that is replaced.
template <typename Function, typename Callable>
[[nodiscard]] ImportHook<Function, Callable> HookImport(HMODULE module, const char* function,
                                                        Callable callable)
{
    return ImportHook<Function, Callable>(module, function, std::move(callable));
}

} // namespace support
