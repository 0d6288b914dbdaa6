// Reads and writes the values that describe shares, in UTF-16 as Windows does.
#include "ShareStore.h"

#include "../support/Error.h"
#include "../support/Registry.h"

#include <map>

namespace demo {

namespace {

constexpr const char* sharesKey = "SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Shares";

using Fields = std::map<std::wstring, std::wstring>;

// A multi-string as it is stored; empty when it is absent or of another type.
std::wstring ReadStrings(HKEY key, const wchar_t* name)
{
    DWORD size = 0;
    if (RegGetValueW(key, nullptr, name, RRF_RT_REG_MULTI_SZ, nullptr, nullptr, &size) != ERROR_SUCCESS)
        return {};
    std::wstring strings(size / sizeof(wchar_t), L'\0');
    if (RegGetValueW(key, nullptr, name, RRF_RT_REG_MULTI_SZ, nullptr, strings.data(), &size) !=
        ERROR_SUCCESS)
        return {};
    return strings;
}

Fields Parse(const std::wstring& strings)
{
    Fields fields;
    for (size_t start = 0; start < strings.size();) {
        const std::wstring field = strings.c_str() + start;
        const size_t equals = field.find(L'=');
        if (equals != std::wstring::npos)
            fields[field.substr(0, equals)] = field.substr(equals + 1);
        start += field.size() + 1;
    }
    return fields;
}

// Written by hand a number may be anything; what is none counts as 0.
DWORD Number(const std::wstring& text)
{
    return static_cast<DWORD>(std::wcstoul(text.c_str(), nullptr, 10));
}

// The order is the one in which Windows writes them.
std::wstring Format(const Share& share)
{
    const std::wstring fields[] = {
        L"CSCFlags=0",
        L"MaxUses=" + std::to_wstring(share.maxUses),
        L"Path=" + share.path,
        L"Permissions=" + std::to_wstring(share.permissions),
        L"Remark=" + share.remark,
        L"ShareName=" + share.name,
        L"Type=" + std::to_wstring(share.type),
    };
    std::wstring strings;
    for (const auto& field : fields)
        strings.append(field.c_str(), field.size() + 1);
    return strings;
}

} // namespace

std::optional<Share> FindShare(const std::wstring& name)
{
    const auto key = Key::Open(sharesKey);
    if (!key)
        return std::nullopt;
    auto fields = Parse(ReadStrings(key->Get(), name.c_str()));
    if (fields.empty())
        return std::nullopt;
    return Share{
        fields[L"ShareName"],           fields[L"Path"],           fields[L"Remark"], Number(fields[L"Type"]),
        Number(fields[L"Permissions"]), Number(fields[L"MaxUses"])};
}

void StoreShare(const Share& share)
{
    const auto key = Key::Create(sharesKey);
    const std::wstring strings = Format(share);
    const size_t size = (strings.size() + 1) * sizeof(wchar_t);
    Require(RegSetValueExW(key.Get(), share.name.c_str(), 0, REG_MULTI_SZ,
                           reinterpret_cast<const BYTE*>(strings.c_str()), static_cast<DWORD>(size)),
            "storing a share");
}

bool RemoveShare(const std::wstring& name)
{
    const auto key = Key::Create(sharesKey);
    return RegDeleteValueW(key.Get(), name.c_str()) == ERROR_SUCCESS;
}

} // namespace demo
