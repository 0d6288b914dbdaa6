// What the stand-in has for an import table: every function that it provides is called through a named slot,
// so that tests can hook it just as they hook an import on Windows.
#pragma once

namespace standin {

// The slot of one function. Made once per function, for the life of the program.
class ImportSlot
{
  public:
    ImportSlot(const char* name, void* function);

    // Slot of the function with this name; null when the program has none.
    [[nodiscard]] static ImportSlot* Find(const char* name);

    // What calls of the function reach now, and what they reach without hooks.
    void* address;
    void* const original;

  private:
    const char* m_name;
    ImportSlot* m_next;
};

// A function of the stand-in itself, whatever hooks there are on it: Windows' own calls of its functions are
// not the program's.
template <typename Function>
[[nodiscard]] Function* Unhooked(const char* name)
{
    return reinterpret_cast<Function*>(ImportSlot::Find(name)->original);
}

template <typename Function>
class Import;

// The slot of a function with its type; calling it calls what the slot holds.
template <typename Result, typename... Arguments>
class Import<Result(Arguments...)>
{
  public:
    Import(const char* name, Result (*function)(Arguments...))
        : m_slot(name, reinterpret_cast<void*>(function))
    {
    }

    Result operator()(Arguments... arguments) const
    {
        return reinterpret_cast<Result (*)(Arguments...)>(m_slot.address)(arguments...);
    }

  private:
    ImportSlot m_slot;
};

} // namespace standin
