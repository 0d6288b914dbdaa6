// The reader of ResourceReader.h.
#include "tests/unit/resources/ResourceReader.h"

namespace {

constexpr UINT kStringsPerBlock = 16;
// RT_STRING is the 8-bit spelling where UNICODE is undefined.
const wchar_t* const kStringTable = MAKEINTRESOURCEW(6);

BOOL CALLBACK CollectId(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR ids)
{
    if (IS_INTRESOURCE(name))
        reinterpret_cast<std::set<int>*>(ids)->insert(LOWORD(reinterpret_cast<ULONG_PTR>(name)));
    return TRUE;
}

} // namespace

const char* LanguageName(LANGID language)
{
    return language == kJapanese ? "Japanese" : "English";
}

std::string_view FindResourceBytes(const wchar_t* type, const wchar_t* name, LANGID language)
{
    const HMODULE module = GetModuleHandleW(nullptr);
    const HRSRC resource = FindResourceExW(module, type, name, language);
    if (resource == nullptr)
        return {};
    const HGLOBAL loaded = LoadResource(module, resource);
    return {static_cast<const char*>(LockResource(loaded)), SizeofResource(module, resource)};
}

std::optional<std::wstring> FindString(UINT id, LANGID language)
{
    const std::string_view block =
        FindResourceBytes(kStringTable, MAKEINTRESOURCEW(id / kStringsPerBlock + 1), language);
    if (block.empty())
        return std::nullopt;
    // A block is sixteen strings, each behind its length.
    const auto* length = reinterpret_cast<const WCHAR*>(block.data());
    for (UINT skipped = 0; skipped < id % kStringsPerBlock; ++skipped)
        length += 1 + *length;
    if (*length == 0)
        return std::nullopt;
    return std::wstring(length + 1, *length);
}

std::set<UINT> StringIds(LANGID language)
{
    std::set<UINT> ids;
    for (const int block : ResourceIds(kStringTable, language)) {
        const UINT first = (static_cast<UINT>(block) - 1) * kStringsPerBlock;
        for (UINT id = first; id < first + kStringsPerBlock; ++id) {
            if (FindString(id, language))
                ids.insert(id);
        }
    }
    return ids;
}

std::set<int> ResourceIds(const wchar_t* type, LANGID language)
{
    std::set<int> ids;
    EnumResourceNamesW(nullptr, type, CollectId, reinterpret_cast<LONG_PTR>(&ids));
    std::erase_if(ids,
                  [&](int id) { return FindResourceBytes(type, MAKEINTRESOURCEW(id), language).empty(); });
    return ids;
}

std::string ToUtf8(std::wstring_view text)
{
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), size, nullptr, nullptr);
    return result;
}

std::wstring FromUtf8(std::string_view text)
{
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring result(static_cast<size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), size);
    return result;
}
