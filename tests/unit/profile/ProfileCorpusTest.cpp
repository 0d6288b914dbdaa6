// What the fuzzer found worth keeping, run once more: the engine and its model must agree on every input.
#include "ProfileFixture.h"

#include "host/fuzz/ProfileScenario.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <vector>

namespace {

// PROFILE_CORPUS, or a path from this program's directory.
std::filesystem::path CorpusDirectory()
{
    return std::filesystem::path(testing::internal::GetArgvs().front()).parent_path() / PROFILE_CORPUS;
}

TEST(ProfileCorpus, GivesTheSameResultsAsTheModel)
{
    const std::string path = profile::ScratchPath("corpus.ini");
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(CorpusDirectory())) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.data());
        EXPECT_EQ(fuzz::RunProfileScenario(path, data, bytes.size()), "") << entry.path();
        ++count;
    }
    EXPECT_GT(count, 50) << "the corpus is not where it was";
}

} // namespace
