// What the agents call their services, registry keys and values, and the system those that the applet needs
// besides: the one place that spells them. Included by the product, the tests and the made-up machine. Names
// are compared without regard to letter case; keys lie below HKEY_LOCAL_MACHINE.
#pragma once

#include <array>

// Services
inline constexpr char hostServiceName[] = "VtMgHost";
inline constexpr char serverServiceName[] = "VtMgServ";
inline constexpr char storageServiceName[] = "VtMgStor";
inline constexpr char nicServiceName[] = "VTNNicMgmt";
inline constexpr char snmpServiceName[] = "SNMP"; // the system's own, for which the sub-agents work
inline constexpr char webAgentServiceName[] = "VtnWebWmi";
inline constexpr char replicatorServiceName[] = "Replicator"; // the system's own, before Windows 2000

// The key of each service is a subkey of this one.
inline constexpr char servicesKey[] = "SYSTEM\\CurrentControlSet\\Services";

// Subkeys of an agent service's key. The SNMP subkeys hold what concerns SNMP for the service as a whole.
inline constexpr char parametersSubkey[] = "Parameters";
inline constexpr char snmpSubkey[] = "VTNSNMP";
inline constexpr char nicSnmpSubkey[] = "VTNNISNMP"; // of the NIC service

// Subkeys that are no sub-agents, whatever the service.
inline constexpr std::array nonAgentSubkeys = {parametersSubkey, "SECURITY", "AppTrap", "Linkage", "ENUM"};

// Sub-agents that have a meaning to the applet; all others are names to it.
inline constexpr char rackSubAgent[] = "VTNRACK";      // of the server service
inline constexpr char upsSubAgent[] = "VTNUPS";        // of every service
inline constexpr char nicSubAgent[] = "VTNMNIC";       // of the NIC service
inline constexpr char nicSecondSubAgent[] = "VTNNICS"; // the other part of the one before

// Keys of the agents
inline constexpr char hostSnmpKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgHost\\VTNSNMP";
inline constexpr char hostAgentKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgHost\\VTNMHOST";
inline constexpr char hostParametersKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgHOST\\Parameters";
inline constexpr char parkedDebuggerKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgHost\\AppTrap";
inline constexpr char fibreAgentKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgStor\\VTNFCA";
inline constexpr char arrayAgentKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgStor\\VTNMIDA";
inline constexpr char sasAgentKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgStor\\VTNSAS";
inline constexpr char productKey[] = "SOFTWARE\\Vortan Lumora Agent";
inline constexpr char trapKey[] = "SYSTEM\\VortanHost\\Host\\Component\\GenericTrap";

// Keys of the system. The first names the debugger that is started when a program crashes.
inline constexpr char activeDebuggerKey[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\AeDebug";
inline constexpr char productOptionsKey[] = "SYSTEM\\CurrentControlSet\\Control\\ProductOptions";
inline constexpr char fileServerKey[] = "SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Parameters";

// Values of an agent service: the sub-agents that it starts, what the user sees of one, and how the service
// starts itself.
inline constexpr char subServicesValue[] = "SubServices";
inline constexpr char displayNameValue[] = "DisplayName";
inline constexpr char startTypeValue[] = "Start";
inline constexpr char dependenciesValue[] = "DependOnService";

// Values of the SNMP Settings page
inline constexpr char serverRoleValue[] = "ServerRole";
inline constexpr char setsEnabledValue[] = "SetsEnabled";
inline constexpr char hostFlagsValue[] = "HostFlags";
inline constexpr char timeoutValue[] = "Timeout";
inline constexpr char debuggerValue[] = "Debugger"; // in the keys of the active and of the parked one
inline constexpr char trapDataValue[] = "TrapData";

// Values of the other pages
inline constexpr char disableFlagsValue[] = "DisableFlags";
inline constexpr char clientIniValue[] =
    "ClientIni"; // path of the login script, while desktop management is on
inline constexpr char nullSessionSharesValue[] = "NullSessionShares";
inline constexpr char processesValue[] = "ProcMon";
inline constexpr char computersValue[] = "Destination";
inline constexpr char userNameValue[] = "DestinationUsername";
inline constexpr char passwordValue[] = "DestinationPassword";

// Values of the system's product options
inline constexpr char productTypeValue[] = "ProductType";
inline constexpr char productSuiteValue[] = "ProductSuite";

// Made by the host agent when it is ready for a test trap.
inline constexpr char alerterMutex[] = "VtnHostAlerterInited";
