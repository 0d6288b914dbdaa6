// The tests of killed processes; or, with --perform FILE, the process that is killed.
#include "kill/KilledProcess.h"

#include <gtest/gtest.h>
#include <string_view>

int main(int argc, char** argv)
{
    if (argc == 3 && std::string_view(argv[1]) == "--perform")
        return sweep::RunAsChild(argv[2]);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
