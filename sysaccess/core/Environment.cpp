// The calls of Windows that expand environment variables.
#include "sysaccess/core/Environment.h"

#include <memory>
#include <new>
#include <windows.h>

bool ExpandEnvironment(const char* text, std::span<char> buffer)
{
    const DWORD size = ExpandEnvironmentStringsA(text, buffer.data(), static_cast<DWORD>(buffer.size()));
    return size > 0 && size <= buffer.size();
}

void ExpandEnvironment(std::string& text)
{
    const std::size_t size = std::size_t{ExpandEnvironmentStringsA(text.c_str(), nullptr, 0)} + 1;
    const std::unique_ptr<char[]> expanded(new (std::nothrow) char[size]());
    if (expanded != nullptr && ExpandEnvironment(text.c_str(), {expanded.get(), size}))
        text = expanded.get();
}
