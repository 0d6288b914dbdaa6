// The members of "snmp", and the rules between them.
#include "command/SnmpSection.h"

#include "command/CodePage.h"
#include "command/Document.h"

#include <algorithm>
#include <array>

namespace {

constexpr DWORD millisecondsPerSecond = 1000;

std::vector<std::string> IntervalNames()
{
    std::vector<std::string> names;
    for (const CollectionInterval& interval : collectionIntervals)
        names.push_back(std::to_string(interval.milliseconds / millisecondsPerSecond));
    return names;
}

Json IntervalSchema(const char* description)
{
    Json seconds = Json::array();
    for (const CollectionInterval& interval : collectionIntervals)
        seconds.push_back(interval.milliseconds / millisecondsPerSecond);
    return {{"enum", std::move(seconds)}, {"description", description}};
}

Json ShowInterval(const SnmpSettings& settings)
{
    const auto index = static_cast<std::size_t>(settings.intervalIndex);
    return collectionIntervals[index].milliseconds / millisecondsPerSecond;
}

void TakeInterval(SnmpSettings& settings, const Json& value, const std::string& path)
{
    if (!value.is_number())
        RefuseMember(path, std::string("must be a number of seconds, not ") + value.type_name());
    const auto isWanted = [&](const CollectionInterval& interval) {
        return value.get<double>() * millisecondsPerSecond == interval.milliseconds;
    };
    const auto found = std::ranges::find_if(collectionIntervals, isWanted);
    if (found == collectionIntervals.end())
        RefuseMember(path, OneLine(value) + " is none of " + Listed(IntervalNames()));
    settings.intervalIndex = static_cast<int>(found - collectionIntervals.begin());
}

void TakeServerRole(SnmpSettings& settings, const Json& value, const std::string& path)
{
    const std::string role = RequireLocalText(value, path);
    if (role.size() > serverRoleLimit)
        RefuseMember(path, "takes " + std::to_string(role.size()) +
                               " bytes in the code page of this system; " + std::to_string(serverRoleLimit) +
                               " are the most");
    const bool hasControls = std::ranges::any_of(role, [](unsigned char code) { return code < ' '; });
    if (hasControls && role != settings.serverRole)
        RefuseMember(path, "holds line ends or other control characters");
    settings.serverRole = role;
}

void TakeRackTraps(SnmpSettings& settings, const Json& value, const std::string& path)
{
    const bool isWanted = RequireBoolean(value, path);
    if (!settings.hasRackSupport)
        RefuseMember(path, "can be changed only where the rack infrastructure agent is installed");
    settings.rackTrapsDisabled = isWanted ? FALSE : TRUE;
}

constexpr std::array<Member<SnmpSettings>, 7> snmpMembers = {{
    {"serverRole", "What the server is for: up to 64 bytes in the system's code page.", TextSchema,
     [](const SnmpSettings& settings) -> Json { return ToUtf8(settings.serverRole); }, TakeServerRole,
     ServerRoleChanged},
    {"collectionIntervalSeconds", "How often the agents collect data.", IntervalSchema, ShowInterval,
     TakeInterval, IntervalChanged},
    FlagMember<&SnmpSettings::setsEnabled, false, SnmpSettings>("setsEnabled",
                                                                "SNMP managers may set values.", SetsChanged),
    FlagMember<&SnmpSettings::remoteReboot, false, SnmpSettings>(
        "remoteReboot", "SNMP managers may reboot the server; needs setsEnabled.", RemoteRebootChanged),
    FlagMember<&SnmpSettings::exceptionTrap, false, SnmpSettings>(
        "exceptionTrap", "A program that crashes makes the agents send a trap.", ExceptionTrapChanged),
    FlagMember<&SnmpSettings::telnetDisabled, true, SnmpSettings>(
        "telnetDetection", "The host agent looks for a Telnet service.", TelnetChanged),
    {"rackTraps", "Rack infrastructure traps are sent; changes only where the rack agent is installed.",
     BooleanSchema, [](const SnmpSettings& settings) -> Json { return settings.rackTrapsDisabled == FALSE; },
     TakeRackTraps, RackTrapsChanged},
}};

} // namespace

SnmpSection::SnmpSection() : TableSection("snmp", "The SNMP Settings page.", snmpMembers) {}

void SnmpSection::Load()
{
    m_settings.Load();
    m_settings.KeepRemoteRebootToSets();
}

void SnmpSection::Take(const Json& wanted)
{
    TableSection::Take(wanted);
    if (m_settings.setsEnabled || !m_settings.remoteReboot)
        return;
    if (wanted.contains("remoteReboot"))
        RefuseMember(PathOf("remoteReboot"), "needs SNMP sets; set setsEnabled to true as well");
    m_settings.KeepRemoteRebootToSets(); // it is stored with the sets, which have changed
}

void SnmpSection::Save()
{
    m_settings.SaveOnly(m_changes);
    RequireWritten();
}

// Agents that do not take a value are passed over, as on the page. Nobody sees the page here: that of the
// host agent, which the settings are read from, is looked at once more.
void SnmpSection::RequireWritten() const
{
    SnmpSection now;
    now.Load();
    for (const MemberChange& change : ChangesBetween(Name(), Show(), now.Show(), Absent()))
        throw CommandError(ExitCode::Failed, change.path + ": was written and is " + OneLine(change.after) +
                                                 " all the same; check who may change it.");
}
