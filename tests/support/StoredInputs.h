// What a stored value may look like besides what is expected: every type, sizes that nobody thinks of, with
// and without its end. For tests that store each and look at what becomes of it.
#pragma once

#include "support/TestRegistry.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <vector>
#include <windows.h>

namespace support {

// One way in which a value may be stored; `size` in bytes.
struct StoredInput
{
    DWORD type;
    std::size_t size;
    bool hasEnd; // zeros at its end, one or, in a list of texts, two
};

inline std::ostream& operator<<(std::ostream& out, const StoredInput& input)
{
    return out << "type " << input.type << ", " << input.size << " bytes, "
               << (input.hasEnd ? "with" : "without") << " its end";
}

inline constexpr DWORD storedTypes[] = {
    REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_DWORD_BIG_ENDIAN, REG_MULTI_SZ, REG_QWORD};

// Every type in sizes from nothing to 1 MB; `size` is the usual one.
[[nodiscard]] inline std::vector<StoredInput> StoredInputs(std::size_t size)
{
    std::vector<StoredInput> inputs;
    for (const DWORD type : storedTypes) {
        for (const std::size_t tried : {std::size_t{0}, std::size_t{1}, size - 1, size, size + 1,
                                        std::size_t{0x10000}, std::size_t{0x100000}})
        {
            inputs.push_back({type, tried, true});
            inputs.push_back({type, tried, false});
        }
    }
    return inputs;
}

// No zero but those at its end.
[[nodiscard]] inline Bytes BytesOf(const StoredInput& input)
{
    Bytes bytes(input.size, 'A');
    const std::size_t zeros = !input.hasEnd ? 0 : input.type == REG_MULTI_SZ ? 2 : 1;
    std::fill(bytes.end() - static_cast<std::ptrdiff_t>(std::min(zeros, bytes.size())), bytes.end(), BYTE{0});
    return bytes;
}

} // namespace support
