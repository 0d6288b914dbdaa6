// See the header.
#include "RegistryWork.h"

#include "pages/core/StorageSettings.h"
#include "sysaccess/core/AgentServices.h"

#include <algorithm>
#include <array>

namespace {

using support::TestKey;

constexpr std::size_t oneWrite = 3; // open, set, close

std::size_t Read(const std::string& key, const char* value)
{
    return TestKey(key).Value(value).has_value() ? 4 : 3;
}

// Counted up to the call that finds no more, then read.
std::size_t List(const std::string& key)
{
    return 2 * TestKey(key).SubkeyNames().size() + 1 + 2;
}

std::size_t Agents(const AgentService& service)
{
    std::size_t calls = Read(service.ParametersKey(), subServicesValue) + List(service.Key());
    for (const std::string& name : TestKey(service.Key()).SubkeyNames()) {
        if (!IsAmong(service.hiddenSubkeys, name))
            calls += Read(service.Key() + "\\" + name, displayNameValue);
    }
    return calls;
}

std::size_t SnmpSettings()
{
    return List(ServiceKey(serverServiceName)) + Read(productKey, serverRoleValue) +
           Read(hostSnmpKey, setsEnabledValue) + Read(hostAgentKey, hostFlagsValue) +
           Read(hostSnmpKey, timeoutValue) + Read(activeDebuggerKey, debuggerValue);
}

std::size_t Intervals(const AgentService& service)
{
    std::size_t calls = List(service.Key());
    for (const std::string& name : TestKey(service.Key()).SubkeyNames())
        calls += IsAmong(nonAgentSubkeys, name) ? 0 : oneWrite;
    return calls;
}

std::string ValueOf(const sweep::Call& call)
{
    return call.place.substr(call.place.rfind(", ") + 2);
}

std::string KeyOf(const sweep::Call& call)
{
    const std::string path = call.place.substr(call.place.find(", ") + 2);
    return path.substr(0, path.find(", "));
}

} // namespace

std::vector<sweep::Call> RegistryCallsAmong(const std::vector<sweep::Call>& calls)
{
    std::vector<sweep::Call> registry;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(registry),
                 [](const sweep::Call& call) { return call.function.starts_with("Reg"); });
    return registry;
}

std::size_t LeastCallsOfOpening()
{
    std::size_t calls = SnmpSettings();
    for (const AgentService& service : agentServices)
        calls += Agents(service);
    for (const StorageFeature& feature : storageFeatures)
        calls += Read(feature.agentKey, disableFlagsValue);
    calls += Read(hostAgentKey, clientIniValue);
    return calls + Read(productOptionsKey, productTypeValue);
}

std::size_t LeastCallsOfSave()
{
    constexpr std::size_t isSnmpInstalled = 2; // open, close
    // Services: two values of each, and the dependencies; SNMP: the role, the flags of four, telnet, two
    // debuggers.
    std::size_t calls = agentServices.size() * 2 * oneWrite + isSnmpInstalled + oneWrite;
    calls += oneWrite + agentServices.size() * oneWrite + oneWrite + 2 * oneWrite;
    for (const AgentService& service : agentServices)
        calls += Intervals(service);
    for (const StorageFeature& feature : storageFeatures)
        calls += Read(feature.agentKey, disableFlagsValue) + oneWrite;
    return calls + oneWrite; // the monitored processes
}

RegistryReplay::RegistryReplay(std::vector<sweep::Call> calls) : m_calls(std::move(calls))
{
    for (const sweep::Call& call : m_calls) {
        if (call.function == "RegSetValueExA")
            m_values[call.place] = TestKey(KeyOf(call)).Value(ValueOf(call)).value_or(support::StoredValue{});
    }
}

void RegistryReplay::Run()
{
    for (const sweep::Call& call : m_calls)
        Make(call);
}

void RegistryReplay::Make(const sweep::Call& call)
{
    std::array<BYTE, 4096> data{};
    DWORD size = data.size();
    if (call.function == "RegOpenKeyA" || call.function == "RegOpenKeyExA") {
        m_subkey = 0;
        RegOpenKeyA(HKEY_LOCAL_MACHINE, KeyOf(call).c_str(), &m_open.emplace_back());
    } else if (call.function == "RegQueryValueExA") {
        RegQueryValueExA(m_open.back(), ValueOf(call).c_str(), nullptr, nullptr, data.data(), &size);
    } else if (call.function == "RegEnumKeyA") {
        RegEnumKeyA(m_open.back(), m_subkey++, reinterpret_cast<char*>(data.data()), size);
    } else if (call.function == "RegSetValueExA") {
        const support::StoredValue& value = m_values.at(call.place);
        RegSetValueExA(m_open.back(), ValueOf(call).c_str(), 0, value.type, value.bytes.data(),
                       static_cast<DWORD>(value.bytes.size()));
    } else if (call.function == "RegCloseKey") {
        RegCloseKey(m_open.back());
        m_open.pop_back();
    }
}
