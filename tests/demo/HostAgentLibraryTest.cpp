// The host agent library: a trap is a line of its log.
#include "demo/hostagent/HostAgentLibrary.h"
#include "StandIn.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace {

std::string Content(const std::filesystem::path& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(HostAgentLibrary, LogsEachTrapBesideItself)
{
    const auto log = BuiltFile("traps.log");
    std::filesystem::remove(log);
    const StandIn library("VTNMHOST.DLL");
    const auto send = library.Get<decltype(sendVtnUserTrap)>("sendVtnUserTrap");

    EXPECT_EQ(send("first trap"), 0u);
    EXPECT_EQ(send("second trap"), 0u);

    const std::string lines = Content(log);
    EXPECT_NE(lines.find(" first trap\n"), std::string::npos) << lines;
    EXPECT_LT(lines.find(" first trap\n"), lines.find(" second trap\n")) << lines;
    std::filesystem::remove(log);
}

TEST(HostAgentLibrary, AnswersWithAnErrorWhenTheLogCannotBeWritten)
{
    const auto log = BuiltFile("traps.log");
    std::filesystem::remove(log);
    std::filesystem::create_directory(log);
    const StandIn library("VTNMHOST.DLL");

    EXPECT_NE(library.Get<decltype(sendVtnUserTrap)>("sendVtnUserTrap")("lost trap"), 0u);

    std::filesystem::remove(log);
}

} // namespace
