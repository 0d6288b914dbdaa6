// One run of the profile engine beside its model, made of arbitrary bytes. The fuzzer and the test of the
// corpus use it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

// Reads a mode, a file and a sequence of operations out of the bytes, and performs them with both, on a file
// with the path, which is gone afterwards. Returns a description of the first difference; empty when there is
// none.
[[nodiscard]] std::string RunProfileScenario(const std::string& path, const std::uint8_t* data,
                                             std::size_t size);

} // namespace fuzz
