// What the sweeps try each time of the many cases that they have.
#pragma once

#include "sweep/Operation.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace sweep {

// About `size` of the cases, evenly spread; all of them with VTN_THOROUGH in the environment.
template <typename Case>
[[nodiscard]] std::vector<Case> Sampled(const std::vector<Case>& cases, std::size_t size)
{
    if (std::getenv("VTN_THOROUGH") != nullptr)
        return cases;
    const std::size_t stride = std::max<std::size_t>(1, cases.size() / size) | 1U;
    std::vector<Case> sample;
    for (std::size_t i = stride / 2; i < cases.size(); i += stride)
        sample.push_back(cases[i]);
    return sample;
}

// An operation's name as a part of a test's name.
inline std::string NameOfOperation(const testing::TestParamInfo<Operation>& info)
{
    std::string name = info.param.name;
    std::erase(name, ' ');
    return name;
}

} // namespace sweep
