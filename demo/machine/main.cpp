// Machine.exe: makes the machine on which the applet is tried, a domain controller with every agent
// installed, and brings it up.
#include "Agents.h"
#include "Settings.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

namespace {

constexpr const char* usage = "usage: Machine make\n"
                              "       Machine start [--member-server]\n"
                              "\n"
                              "make   registers the services and writes the settings\n"
                              "start  starts the services and waits until they run\n";

void Make()
{
    demo::MakeAgents();
    demo::MakeSettings();
    demo::MakeDomainFiles();
}

void Start(demo::ServerKind kind)
{
    demo::SetServerKind(kind);
    demo::BringUpAgents();
}

int Do(const std::vector<std::string>& arguments)
{
    using Arguments = std::vector<std::string>;
    if (arguments == Arguments{"make"})
        Make();
    else if (arguments == Arguments{"start"})
        Start(demo::ServerKind::DomainController);
    else if (arguments == Arguments{"start", "--member-server"})
        Start(demo::ServerKind::MemberServer);
    else {
        std::fputs(usage, stderr);
        return 2;
    }
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return Do({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "Machine: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
