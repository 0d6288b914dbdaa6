// Reads string tables as they lie in the resources.
#include "sysaccess/core/Texts.h"

#include <cstring>
#include <span>

namespace {

// Texts stand in blocks of sixteen, each with its length before it.
constexpr UINT textsPerBlock = 16;

using Units = std::span<const char16_t>;

Units BlockOf(UINT textId)
{
    const HRSRC place = FindResourceA(nullptr, MAKEINTRESOURCEA(textId / textsPerBlock + 1), RT_STRING);
    const HGLOBAL block = place == nullptr ? nullptr : LoadResource(nullptr, place);
    const void* const data = block == nullptr ? nullptr : LockResource(block);
    if (data == nullptr)
        return {};
    return {static_cast<const char16_t*>(data), SizeofResource(nullptr, place) / sizeof(char16_t)};
}

// The text number `index` of a block.
Units TextIn(Units block, UINT index)
{
    for (;; --index) {
        const std::size_t length = block.empty() ? 0 : block.front();
        if (block.empty() || length >= block.size())
            return {};
        if (index == 0)
            return block.subspan(1, length);
        block = block.subspan(1 + length);
    }
}

} // namespace

std::string ProgramText(UINT textId)
{
    const Units text = TextIn(BlockOf(textId), textId % textsPerBlock);
    const std::wstring wide(text.begin(), text.end());
    std::string narrow(wide.size() * 4, '\0'); // the most bytes of a character
    const int length = WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()),
                                           narrow.data(), static_cast<int>(narrow.size()), nullptr, nullptr);
    narrow.resize(static_cast<std::size_t>(length));
    return narrow;
}
