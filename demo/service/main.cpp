// AgentService.exe: the program behind every service of the made-up machine; started by the service manager.
// By hand it registers a service of its own and takes it away again.
#include "../support/Error.h"
#include "../support/Services.h"
#include "Behaviour.h"
#include "Service.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr const char* usage =
    "usage: AgentService --install NAME DISPLAYNAME [VALUE=NUMBER...]\n"
    "       AgentService --remove NAME\n"
    "\n"
    "The service manager starts this program without arguments. A VALUE is StartDelay, StartSteps, "
    "StopDelay,\n"
    "StopSteps, WaitHint, StartError or RunTime; times are milliseconds, 4294967295 is for ever.\n";

// "NAME=NUMBER" into the field of that name; throws std::invalid_argument for anything else.
void Apply(const std::string& setting, demo::Behaviour& behaviour)
{
    const size_t equals = setting.find('=');
    const auto value =
        std::ranges::find(demo::behaviourValues, setting.substr(0, equals),
                          [](const demo::BehaviourValue& known) { return std::string(known.name); });
    if (equals == std::string::npos || value == demo::behaviourValues.end())
        throw std::invalid_argument("not a setting of a service: " + setting);
    behaviour.*value->field = static_cast<DWORD>(std::stoul(setting.substr(equals + 1)));
}

int Install(const std::vector<std::string>& arguments)
{
    demo::Behaviour behaviour;
    for (size_t i = 3; i < arguments.size(); ++i)
        Apply(arguments[i], behaviour);
    demo::InstallService({.name = arguments[1], .displayName = arguments[2], .dependencies = {}});
    demo::StoreBehaviour(arguments[1], behaviour);
    return EXIT_SUCCESS;
}

int RunByHand(const std::vector<std::string>& arguments)
{
    if (arguments.size() >= 3 && arguments[0] == "--install")
        return Install(arguments);
    if (arguments.size() != 2 || arguments[0] != "--remove") {
        std::fputs(usage, stderr);
        return 2;
    }
    demo::RemoveService(arguments[1]);
    return EXIT_SUCCESS;
}

void WINAPI ServiceMain(DWORD, char** arguments)
{
    demo::Service(arguments[0]).Run();
}

int RunAsService()
{
    char anyName[] = ""; // in a process of its own a service is known by its first argument
    const SERVICE_TABLE_ENTRYA services[] = {{anyName, &ServiceMain}, {nullptr, nullptr}};
    demo::RequireCall(StartServiceCtrlDispatcherA(services) != FALSE, "meeting the service manager");
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return argc == 1 ? RunAsService() : RunByHand({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "AgentService: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
