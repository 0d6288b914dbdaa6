// VTNCLNT.EXE: stands in for the discovery client that domain clients run at log-on. It leaves a file with
// the client's name in the directory that VTNCLNT.INI, in the directory given to it, names.
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <windows.h>

namespace {

std::filesystem::path DestinationDirectory(const std::filesystem::path& directory)
{
    std::array<char, MAX_PATH> destination{};
    GetPrivateProfileStringA("Options", "DestinationDirectory", "", destination.data(), MAX_PATH,
                             (directory / "VTNCLNT.INI").string().c_str());
    return destination.data();
}

std::filesystem::path ReportName()
{
    std::array<char, MAX_COMPUTERNAME_LENGTH + 1> name{};
    DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
    GetComputerNameA(name.data(), &size);
    return std::filesystem::path(name.data()).replace_extension(".txt");
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: VTNCLNT DIRECTORY\n", stderr);
        return 2;
    }
    const auto report = DestinationDirectory(argv[1]) / ReportName();
    std::ofstream file(report);
    file << "Discovered by log-on.\n" << std::flush;
    if (file)
        return EXIT_SUCCESS;
    std::fprintf(stderr, "VTNCLNT: %s cannot be written\n", report.string().c_str());
    return EXIT_FAILURE;
}
