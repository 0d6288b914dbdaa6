// Runs a fuzzer's entry on every input of a directory, without libFuzzer: the corpus as a regression test.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** arguments)
{
    if (count != 2)
        return 2;
    int inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++inputs;
    }
    std::printf("%d inputs\n", inputs);
    return inputs == 0 ? 1 : 0;
}
