// Reads and writes the behaviour of a service.
#include "Behaviour.h"

#include "../support/Registry.h"

namespace demo {

std::string BehaviourKey(const std::string& serviceName)
{
    return "SYSTEM\\CurrentControlSet\\Services\\" + serviceName + "\\Parameters";
}

Behaviour LoadBehaviour(const std::string& serviceName)
{
    Behaviour behaviour;
    const auto key = Key::Open(BehaviourKey(serviceName));
    if (!key)
        return behaviour;
    for (const auto& value : behaviourValues)
        behaviour.*value.field = key->Dword(value.name).value_or(0);
    behaviour.readyMutex = key->String(readyMutexValue).value_or("");
    return behaviour;
}

void StoreBehaviour(const std::string& serviceName, const Behaviour& behaviour)
{
    auto key = Key::Create(BehaviourKey(serviceName));
    for (const auto& value : behaviourValues)
        key.SetDword(value.name, behaviour.*value.field);
    if (!behaviour.readyMutex.empty())
        key.SetString(readyMutexValue, behaviour.readyMutex);
}

} // namespace demo
