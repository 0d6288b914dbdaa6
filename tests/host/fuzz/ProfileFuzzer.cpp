// libFuzzer's entry for the profile engine.
#include "ProfileScenario.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string difference = fuzz::RunProfileScenario(data, size);
    if (difference.empty())
        return 0;
    std::fprintf(stderr, "engine and model disagree: %s\n", difference.c_str());
    std::abort();
}
