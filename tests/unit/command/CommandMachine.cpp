// The made-up machine of the command line's tests.
#include "CommandMachine.h"

#include <set>
#include <sstream>

CommandMachine::CommandMachine()
{
    for (const char* agent : {"VTNSNMP", "VTNMHOST", "VTNPERF", "AppTrap"})
        m_agents.AddAgent("VtMgHost", agent);
    for (const char* agent : {"VTNSNMP", "VTNHEALTH", "VTNRACK"})
        m_agents.AddAgent("VtMgServ", agent);
    for (const char* agent : {"VTNSNMP", "VTNFCA", "VTNMIDA", "VTNSAS"})
        m_agents.AddAgent("VtMgStor", agent);
    for (const char* agent : {"VTNNISNMP", "VTNMNIC", "VTNNICS", "VTNVLAN"})
        m_agents.AddAgent("VTNNicMgmt", agent);
    m_agents.SetActive("VtMgHost", {"VTNMHOST"});
    m_agents.SetActive("VtMgStor", {"VTNFCA", "VTNMIDA", "VTNSAS"});
    m_agents.InstallSnmp();
    for (support::TestKey* key :
         {static_cast<support::TestKey*>(&m_role), static_cast<support::TestKey*>(&m_debugger),
          static_cast<support::TestKey*>(&m_server)})
        key->Clear();
    m_product.SetString("ProductType", "ServerNT");
    m_shares.Add("NETLOGON", {.path = m_scripts.Path()});
    CreateDirectoryA(m_windows.File("system32").c_str(), nullptr);
    CreateDirectoryA(m_windows.File("system32\\vtnmgmt").c_str(), nullptr);
    support::WriteBytes(m_windows.File("system32\\vtnmgmt\\VTNCLNT.EXE"), "the client");
    m_board.record = {1, 1, 0, 0};
    m_libraries.SetEntry(
        support::boardLibrary, "Rb4CpWriteData",
        +[](const BoardData* data) { return support::Turn<CommandMachine>::Active().WriteBoard(*data); });
}

DWORD CommandMachine::WriteBoard(const BoardData& data)
{
    m_board.written.push_back(data);
    if (m_boardStatus == ERROR_SUCCESS)
        m_board.record = data;
    return m_boardStatus;
}

Answer CommandMachine::Run(const std::vector<std::string>& arguments, const std::string& input)
{
    TestStreams streams;
    streams.input = input;
    Answer answer;
    answer.code = RunCommand(arguments, streams);
    answer.errors = streams.errors;
    std::istringstream output(streams.output);
    for (std::string line; std::getline(output, line);)
        answer.lines.push_back(Json::parse(line));
    return answer;
}

Json CommandMachine::Get()
{
    const Answer answer = Run({"get"});
    return answer.lines.empty() ? Json(answer.errors) : answer.lines.front();
}

Answer CommandMachine::Set(const std::string& document, const std::vector<std::string>& options)
{
    std::vector<std::string> arguments{"set"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Run(arguments, document);
}

void CommandMachine::ExpectRefused(const std::string& document, const std::string& error,
                                   support::Location where)
{
    ForgetCalls();
    const Answer answer = Set(document);
    support::ExpectEqual(static_cast<int>(ExitCode::WrongUse), static_cast<int>(answer.code), "exit code",
                         where);
    support::ExpectEqual("vtncfg: " + error + "\n", answer.errors, document, where);
    support::ExpectEqual(std::vector<std::string>(), Writes(), "writes", where);
}

void CommandMachine::ForgetCalls()
{
    m_log.Clear();
    m_shares.ForgetCalls();
    m_board.written.clear();
}

std::vector<std::string> CommandMachine::Writes() const
{
    std::vector<std::string> writes =
        m_log.CallsOf({"RegSetValueExA", "RegDeleteValueA", "RegDeleteKeyA", "ChangeServiceConfigA"});
    for (const std::string& call : m_shares.Calls()) {
        if (!call.starts_with("NetShareGetInfo"))
            writes.push_back(call);
    }
    for (std::size_t i = 0; i < m_board.written.size(); ++i)
        writes.emplace_back("Rb4CpWriteData");
    return writes;
}

void CommandMachine::Store(const std::string& processes) const
{
    m_agents.Parameters("VtMgHost").SetBinary("ProcMon", support::Bytes(processes.begin(), processes.end()));
}
