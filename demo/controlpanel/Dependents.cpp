// Finds the dependents of a service in the service keys of the registry.
#include "Dependents.h"

#include "../support/Registry.h"
#include "imports/TextsBehind.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <vector>

namespace demo {

namespace {

constexpr const char* servicesKey = "SYSTEM\\CurrentControlSet\\Services";
constexpr DWORD nameSize = 257;    // of a service, with its zero
constexpr DWORD configSize = 8192; // the largest that the service manager answers

// The name of an opened service, which is found by way of the display name; empty when it is not.
std::string NameOf(SC_HANDLE service)
{
    std::vector<BYTE> buffer(configSize);
    auto* config = reinterpret_cast<QUERY_SERVICE_CONFIGA*>(buffer.data());
    DWORD needed = 0;
    if (!QueryServiceConfigA(service, config, configSize, &needed))
        return {};
    std::array<char, nameSize> name{};
    DWORD length = nameSize;
    const SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT);
    GetServiceKeyNameA(manager, config->lpDisplayName, name.data(), &length);
    CloseServiceHandle(manager);
    return name.data();
}

// Names of services are alike in any letter case.
bool DependsOn(HKEY services, const char* name, const std::string& other)
{
    std::array<char, configSize> block{};
    DWORD size = configSize;
    if (RegGetValueA(services, name, "DependOnService", RRF_RT_REG_MULTI_SZ, nullptr, block.data(), &size) !=
        0)
        return false;
    for (const char* text = block.data(); *text != '\0'; text += std::strlen(text) + 1) {
        if (lstrcmpiA(text, other.c_str()) == 0)
            return true;
    }
    return false;
}

std::vector<std::string> DependentsOf(const std::string& name)
{
    std::vector<std::string> dependents;
    const auto services = Key::Open(servicesKey);
    std::array<char, nameSize> candidate{};
    for (DWORD index = 0;
         services && RegEnumKeyA(services->Get(), index, candidate.data(), nameSize) == ERROR_SUCCESS;
         ++index)
    {
        if (DependsOn(services->Get(), candidate.data(), name))
            dependents.emplace_back(candidate.data());
    }
    return dependents;
}

// Records first, then the texts that they point to.
DWORD SizeOf(const std::vector<std::string>& names)
{
    std::size_t size = names.size() * sizeof(ENUM_SERVICE_STATUSA);
    for (const auto& name : names)
        size += name.size() + 1;
    return static_cast<DWORD>(size);
}

void Fill(LPENUM_SERVICE_STATUSA list, const std::vector<std::string>& names)
{
    support::TextsBehind<char> texts(list + names.size());
    for (const auto& name : names) {
        char* const text = texts.Put(name);
        *list++ = {text, text, {}};
    }
}

} // namespace

BOOL WINAPI ListDependents(SC_HANDLE service, DWORD /*states*/, LPENUM_SERVICE_STATUSA list, DWORD size,
                           LPDWORD needed, LPDWORD count)
{
    const auto names = DependentsOf(NameOf(service));
    *needed = SizeOf(names);
    *count = 0;
    if (size < *needed) {
        SetLastError(ERROR_MORE_DATA);
        return FALSE;
    }
    Fill(list, names);
    *count = static_cast<DWORD>(names.size());
    return TRUE;
}

} // namespace demo
