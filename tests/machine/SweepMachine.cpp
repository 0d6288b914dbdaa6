// See the header.
#include "machine/SweepMachine.h"

#include "desktop/core/DiscoveryShare.h"
#include "pages/core/Thresholds.h"

#include <sstream>

namespace sweep {
namespace {

using support::ServiceState;
using support::TestKey;

constexpr std::array<const char*, 6> madeUpServices = {hostServiceName,     serverServiceName,
                                                       storageServiceName,  nicServiceName,
                                                       webAgentServiceName, snmpServiceName};

constexpr char scriptText[] = "@echo off\r\nnet use h: \\\\server\\home\r\n";

template <typename Value>
std::string Text(const Value& value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

void AddKey(Picture& picture, const TestKey& key)
{
    if (!key.Exists())
        return;
    picture[key.Path()] = "a key";
    for (const std::string& name : key.ValueNames())
        picture[key.Path() + ", " + name] = Text(*key.Value(name));
    for (const std::string& name : key.SubkeyNames())
        AddKey(picture, key.Subkey(name));
}

void AddFiles(Picture& picture, const std::string& directory)
{
    for (const auto& file : std::filesystem::recursive_directory_iterator(directory)) {
        const std::string path = file.path().string();
        picture[path] = file.is_directory() ? "a directory" : support::ReadBytes(path).value_or("unreadable");
    }
}

void AddService(Picture& picture, const std::string& name, const support::ScriptedService& service)
{
    picture["service " + name + ", state"] = std::to_string(service.states.front().dwCurrentState);
    picture["service " + name + ", start type"] = std::to_string(service.startType);
    picture["service " + name + ", needs"] = testing::PrintToString(service.dependencies);
}

void Empty(const std::string& directory)
{
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        std::filesystem::permissions(entry, std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add);
        std::filesystem::remove_all(entry);
    }
}

} // namespace

int AgreeingUser::Show(HWND /*owner*/, LPCSTR text, LPCSTR /*caption*/, UINT style)
{
    AgreeingUser& self = support::Turn<AgreeingUser>::Active();
    self.m_recorder.CountBox();
    self.m_texts.emplace_back(text == nullptr ? "" : text);
    if ((style & MB_TYPEMASK) != MB_YESNO)
        return IDOK;
    return self.m_declines ? IDNO : IDYES;
}

BOOL ReadOnlyWhileEdited::Read(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED overlapped)
{
    const ReadOnlyWhileEdited& self = support::Turn<ReadOnlyWhileEdited>::Active();
    SetFileAttributesA(self.m_path.c_str(), FILE_ATTRIBUTE_READONLY);
    return self.m_readFile.Original<decltype(ReadFile)>()(file, buffer, size, read, overlapped);
}

HANDLE ReadOnlyWhileEdited::Open(LPCSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                                 DWORD disposition, DWORD attributes, HANDLE pattern)
{
    const ReadOnlyWhileEdited& self = support::Turn<ReadOnlyWhileEdited>::Active();
    const bool isEdited = self.m_path == path && (access & GENERIC_WRITE) != 0;
    if (isEdited && disposition == OPEN_ALWAYS)
        SetFileAttributesA(path, FILE_ATTRIBUTE_NORMAL);
    if (isEdited && (GetFileAttributesA(path) & FILE_ATTRIBUTE_READONLY) != 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    return self.m_createFile.Original<decltype(CreateFileA)>()(path, access, sharing, security, disposition,
                                                               attributes, pattern);
}

Settings::Settings(const Places& places) : m_places(places)
{
    Empty(places.windows.Path());
    Empty(places.scripts.Path());
    FillAgents();
    FillSnmp();
    FillDesktop();
}

void Settings::FillAgents()
{
    const std::map<std::string, std::vector<std::string>> agents = {
        {hostServiceName, {"VTNHOST1", "VTNHOST2", snmpSubkey, parametersSubkey}},
        {serverServiceName, {rackSubAgent, snmpSubkey, parametersSubkey}},
        {storageServiceName, {snmpSubkey, parametersSubkey}},
        {nicServiceName, {nicSubAgent, nicSecondSubAgent, nicSnmpSubkey, parametersSubkey}},
    };
    for (const auto& [service, subkeys] : agents) {
        for (const std::string& subkey : subkeys)
            TestKey(ServiceKey(service) + "\\" + subkey).SetString(displayNameValue, subkey + " Agent");
    }
    m_machine.hostParameters.SetMultiString(subServicesValue, {"VTNHOST1"});
    m_machine.hostParameters.SetBinary(processesValue, {0x83, 'a', '.', 'e', 'x', 'e', 0});
    m_machine.arrayAgent.SetDword(disableFlagsValue, 0x12);
}

void Settings::FillSnmp()
{
    m_snmpService.Create();
    m_machine.product.SetString(serverRoleValue, "Mail");
    m_machine.hostSnmp.SetDword(setsEnabledValue, 0x1);
    m_machine.hostSnmp.SetDword(timeoutValue, 30000);
    m_machine.hostAgent.SetDword(hostFlagsValue, 1);
    m_machine.activeDebugger.SetString(debuggerValue, "winedbg");
    m_machine.parkedDebugger.SetString(debuggerValue, "vtndbg -p %ld");
    m_trap.Subkey("Host\\Component\\GenericTrap").SetBinary(trapDataValue, {1});
    m_thresholds.Delete();
    for (const char* const key : thresholdKeys)
        TestKey(key).SetDword("Rising", 90);
}

void Settings::FillDesktop()
{
    m_machine.productOptions.SetString(productTypeValue, "LanmanNT");
    m_serverParameters.SetMultiString(nullSessionSharesValue, {"COMCFG", "DFS$"});
    const std::string agents = m_places.windows.File("system32\\vtnmgmt");
    std::filesystem::create_directories(agents);
    support::WriteBytes(agents + "\\VTNCLNT.EXE", "the client");
    support::WriteBytes(m_places.scripts.File("LOGIN.BAT"), scriptText);
}

void Settings::SwitchDesktopManagementOn()
{
    m_machine.hostAgent.SetString(clientIniValue, m_places.scripts.File("LOGIN.BAT"));
    m_serverParameters.SetMultiString(nullSessionSharesValue, {"COMCFG", "VTNDATA", "DFS$"});
    support::WriteBytes(m_places.scripts.File("VTNCLNT.EXE"), "the client");
    support::WriteBytes(m_places.scripts.File("VTNCLNT.INI"),
                        "[Options]\r\nDestinationDirectory=\\\\a\\b\r\n");
    support::WriteBytes(m_places.scripts.File("LOGIN.BAT"),
                        std::string("rem End of VORTAN section\r\n") + scriptText);
}

void Settings::SwitchExceptionTrapOn()
{
    m_machine.activeDebugger.SetString("Debugger", "vtndbg -p %ld -e %ld -g");
    m_machine.parkedDebugger.SetString("Debugger", "winedbg");
}

void Settings::AddTo(Picture& picture) const
{
    const std::array<const TestKey*, 10> keys = {
        &m_machine.productOptions, &m_machine.hostAgents, &m_machine.serverAgents,   &m_machine.storageAgents,
        &m_machine.nicAgents,      &m_machine.product,    &m_machine.activeDebugger, &m_snmpService,
        &m_serverParameters,       &m_thresholds};
    for (const TestKey* const key : keys)
        AddKey(picture, *key);
    AddFiles(picture, m_places.windows.Path());
    AddFiles(picture, m_places.scripts.Path());
}

StandIns::StandIns(HMODULE module, const std::string& scriptDirectory, CallRecorder& recorder)
    : m_services(module), m_shares(module), m_libraries(module), m_clock(module), m_user(module, recorder)
{
    s_trap.clear();
    m_libraries.Add("VTNMHOST.DLL");
    m_libraries.SetEntry("VTNMHOST.DLL", "sendVtnUserTrap", &SendTrap);
    m_board.record = {1, 1, 0, 0};
    m_tasks.names = {"services.exe", "explorer.exe"};
    m_shares.Add("NETLOGON", {.path = scriptDirectory});
    const auto running = [](const char* displayName) {
        return support::ScriptedService{.displayName = displayName,
                                        .states = {ServiceState(SERVICE_RUNNING)}};
    };
    for (const char* const name : {hostServiceName, storageServiceName, nicServiceName, webAgentServiceName})
        m_services.Add(name, running(name));
    m_services.Add(serverServiceName, {.displayName = serverServiceName});
    support::ScriptedService snmp = running("SNMP Service");
    snmp.dependents = {hostServiceName, storageServiceName};
    m_services.Add(snmpServiceName, snmp);
}

DWORD StandIns::SendTrap(const char* text)
{
    s_trap = text;
    return ERROR_SUCCESS;
}

void StandIns::AddTo(Picture& picture) const
{
    for (const char* const name : madeUpServices)
        AddService(picture, name, m_services.Service(name));
    if (const auto share = m_shares.Find(discoveryShareName))
        picture[std::string("share ") + discoveryShareName] = Text(*share);
    picture["board"] = std::to_string(m_board.written.size()) + " writes";
    for (const BoardData& data : m_board.written)
        picture["board"] += Text(data.battery) + Text(data.remoteAlerting) + Text(data.serverResetPending) +
                            Text(data.resetRequest);
    picture["trap"] = s_trap.empty() ? "not sent" : "sent";
}

StandInState StandIns::State() const
{
    StandInState state{.share = m_shares.Find(discoveryShareName),
                       .board = m_board.written.empty() ? m_board.record : m_board.written.back()};
    for (const char* const name : madeUpServices)
        state.services[name] = m_services.Service(name);
    return state;
}

void StandIns::Put(const StandInState& state)
{
    for (const auto& [name, service] : state.services)
        m_services.Add(name, service);
    if (state.share)
        m_shares.Add(discoveryShareName, *state.share);
    m_board.record = state.board;
}

} // namespace sweep
