// Stands before one imported function of the applet: reports each call to a CallRecorder and fails the one
// that the recorder names. WatchedImports.h makes one of these for each function.
#pragma once

#include "machine/CallRecorder.h"
#include "support/FailNth.h"

#include <initializer_list>
#include <string>
#include <sys/stat.h>
#include <tuple>
#include <type_traits>

namespace sweep {

// How a function says that it failed.
enum class Says
{
    Code,     // it answers the error
    Null,     // it answers 0, FALSE or null, and sets the last error
    MinusOne, // it answers -1 or INVALID_HANDLE_VALUE, and sets the last error
};

template <typename Result>
Result Failure(Says says, DWORD code)
{
    if constexpr (std::is_integral_v<Result>) {
        if (says == Says::Code)
            return static_cast<Result>(code);
        return says == Says::MinusOne ? static_cast<Result>(-1) : Result{};
    } else if constexpr (std::is_same_v<Result, HANDLE>) {
        return says == Says::MinusOne ? INVALID_HANDLE_VALUE : nullptr;
    } else {
        return Result{};
    }
}

// What one argument says about what a call is about; nothing for numbers, buffers and flags.
template <typename Argument>
std::string Describe(const CallRecorder& recorder, Argument argument)
{
    if constexpr (std::is_same_v<Argument, const char*>) {
        const bool isText = argument != nullptr && HIWORD(reinterpret_cast<ULONG_PTR>(argument)) != 0;
        return isText ? argument : "";
    } else if constexpr (std::is_same_v<Argument, wchar_t*>) {
        return argument == nullptr ? "" : std::string(argument, argument + std::wcslen(argument));
    } else if constexpr (std::is_pointer_v<Argument> && !std::is_function_v<std::remove_pointer_t<Argument>>)
    {
        return recorder.NameOf(argument);
    } else {
        return {};
    }
}

inline std::string Joined(std::initializer_list<std::string> parts)
{
    std::string joined;
    for (const std::string& part : parts) {
        if (!part.empty())
            joined += joined.empty() ? part : ", " + part;
    }
    return joined;
}

// What a call asks for, where its arguments say so.
template <typename... Arguments>
std::string PurposeOf(const std::string& /*function*/, const Arguments&... /*arguments*/)
{
    return {};
}

// A value's size is asked for first, then its data.
inline std::string PurposeOf(const std::string& /*RegQueryValueExA*/, HKEY /*key*/, LPCSTR /*name*/,
                             LPDWORD /*reserved*/, LPDWORD /*type*/, LPBYTE data, LPDWORD /*size*/)
{
    return data == nullptr ? "size" : "data";
}

// A script's name is checked by reading from the file; it is edited in one that may be new, saved in one that
// exists.
inline std::string PurposeOf(const std::string& /*CreateFileA*/, LPCSTR /*path*/, DWORD access,
                             DWORD /*sharing*/, LPSECURITY_ATTRIBUTES /*security*/, DWORD disposition,
                             DWORD /*attributes*/, HANDLE /*pattern*/)
{
    if ((access & GENERIC_WRITE) == 0)
        return "check";
    return disposition == OPEN_ALWAYS ? "edit" : "save";
}

inline std::string PurposeOf(const std::string& function, const char* /*path*/, int mode)
{
    if (function == "_access")
        return mode == 0 ? "exists" : "is writable";
    return (mode & _S_IWRITE) != 0 ? "make writable" : "make read-only";
}

// What a call opened: the key that it wrote through its last argument, or its result.
template <typename Result, typename Last>
const void* Opened(Result result, Last last)
{
    if constexpr (std::is_same_v<Last, PHKEY>)
        return result == ERROR_SUCCESS ? *last : nullptr;
    else if constexpr (std::is_pointer_v<Result>)
        return result == Failure<Result>(Says::MinusOne, 0) ? nullptr : reinterpret_cast<const void*>(result);
    else
        return nullptr;
}

template <support::FunctionName name, typename Function, Says says, Role role, DWORD... codes>
class Watch;

// One watched function. `codes` are the errors that it is known to answer.
template <support::FunctionName name, typename Result, typename... Arguments, Says says, Role role,
          DWORD... codes>
class Watch<name, Result(Arguments...), says, role, codes...>
{
  public:
    Watch(HMODULE module, CallRecorder& recorder)
        : m_recorder(recorder), m_turn(this), m_import(module, name.text.data(), &Replacement)
    {
        if (!m_import.IsImported())
            throw std::runtime_error(std::string("not imported: ") + name.text.data());
    }

    [[nodiscard]] static std::string Name() { return name.text.data(); }
    [[nodiscard]] static std::vector<DWORD> Codes() { return {codes...}; }

  private:
    static Result Replacement(Arguments... arguments)
    {
        const Watch& self = support::Turn<Watch>::Active();
        CallRecorder& recorder = self.m_recorder;
        const std::string place = Joined({Describe(recorder, arguments)...});
        const bool fails = recorder.Begin({Name(), place, PurposeOf(Name(), arguments...), role});
        // A closing that fails has closed all the same: no other call could show what was open.
        if (fails && role != Role::Closes)
            return Fail(recorder);
        const Result result = self.m_import.template Original<Result(Arguments...)>()(arguments...);
        const DWORD lastError = GetLastError();
        if constexpr (role == Role::Opens)
            NoteOpened(recorder, Opened(result, Last(arguments...)), place);
        if constexpr (role == Role::Closes)
            recorder.Close(First(arguments...));
        if constexpr (role == Role::Changes)
            recorder.NoteChange();
        SetLastError(lastError);
        return fails ? Fail(recorder) : result;
    }

    static Result Fail(const CallRecorder& recorder)
    {
        const DWORD code = recorder.CodeOf(Name());
        SetLastError(code);
        return Failure<Result>(says, code);
    }

    static void NoteOpened(CallRecorder& recorder, const void* handle, const std::string& place)
    {
        if (handle != nullptr)
            recorder.Open(handle, place);
    }

    static auto Last(Arguments... arguments)
    {
        return std::get<sizeof...(Arguments) - 1>(std::tuple(arguments...));
    }
    static auto First(Arguments... arguments) { return std::get<0>(std::tuple(arguments...)); }

    CallRecorder& m_recorder;
    support::Turn<Watch> m_turn;
    support::ReplacedImport m_import;
};

} // namespace sweep
