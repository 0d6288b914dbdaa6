// What set does, predicts and refuses of the login script, on a domain controller.
#include "CommandMachine.h"

#include "sysaccess/core/Handles.h"

namespace {

class DomainSet : public CommandMachine
{
  protected:
    DomainSet() { MakeDomainController(); }
};

TEST_F(DomainSet, SwitchesOffWhereItWasSwitchedOn)
{
    const Json before = Get();
    const std::string other = m_scripts.File("OTHER.BAT");
    ASSERT_EQ(Set(R"({"desktopManagement":{"enabled":true}})").code, ExitCode::Done);
    const Json named = {{"desktopManagement", {{"enabled", true}, {"loginScript", other}}}};
    ASSERT_EQ(Set(named.dump()).code, ExitCode::Done);
    EXPECT_EQ(Get()["desktopManagement"]["loginScript"], other);
    EXPECT_TRUE(support::FileExists(other));
    // A document that names no script: the prediction has the one that is proposed again.
    const Answer predicted = Set(R"({"desktopManagement":{"enabled":false}})", {"--what-if"});
    EXPECT_EQ(predicted.lines.at(0), before);
    const Answer off = Set(before.dump());
    EXPECT_EQ(off.code, ExitCode::Done) << off.errors;
    EXPECT_EQ(off.lines[0], before);
    EXPECT_FALSE(support::FileExists(other));
    EXPECT_FALSE(m_shares.Find("VTNDATA").has_value());
}

TEST_F(DomainSet, RefusesScriptsThatThePageRefuses)
{
    const std::string path = "desktopManagement.loginScript: ";
    const auto on = [&](const std::string& script) {
        return Json({{"desktopManagement", {{"enabled", true}, {"loginScript", script}}}}).dump();
    };
    ExpectRefused(on(m_scripts.File("LOGIN.CMD")), path + "only batch files, which end in .BAT, are allowed");
    ExpectRefused(on(m_scripts.File("absent\\LOGIN.BAT")),
                  path + "the file cannot be opened or made; check its directory");
    const std::string longest = m_scripts.File(std::string(251 - m_scripts.Path().size(), 'x'));
    ExpectRefused(on(longest + "x.BAT"), path + "is longer than 256 bytes");
    EXPECT_EQ(Set(on(longest + ".BAT"), {"--what-if"}).errors, "");
    ExpectRefused(R"({"desktopManagement":{"loginScript":"C:\\other.bat"}})",
                  path + "can be changed only while desktop management is on");
}

TEST_F(DomainSet, RefusesAnotherScriptWhileItIsOn)
{
    ASSERT_EQ(Set(R"({"desktopManagement":{"enabled":true}})").code, ExitCode::Done);
    ExpectRefused(Json({{"desktopManagement", {{"loginScript", m_scripts.File("LOGIN.CMD")}}}}).dump(),
                  "desktopManagement.loginScript: only batch files, which end in .BAT, are allowed");
}

TEST_F(DomainSet, RefusesTheProposedScriptInADirectoryThatIsNotThere)
{
    m_shares.Add("NETLOGON", {.path = m_scripts.File("absent")});
    ExpectRefused(R"({"desktopManagement":{"enabled":true}})",
                  "desktopManagement.loginScript: the file cannot be opened or made; check its directory");
}

TEST_F(DomainSet, TakesAScriptThatAnotherProgramHasOpen)
{
    support::WriteBytes(m_scripts.File("LOGIN.BAT"), "@echo off\r\n");
    const UniqueObject editor = OwnUnlessInvalid(CreateFileA(
        m_scripts.File("LOGIN.BAT").c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(editor);
    EXPECT_EQ(Set(R"({"desktopManagement":{"enabled":true}})", {"--what-if"}).errors, "");
}

TEST_F(DomainSet, PredictsWithoutAFileThatIsOpenedForWriting)
{
    support::WriteBytes(m_scripts.File("LOGIN.BAT"), "@echo off\r\n");
    DWORD access = 0;
    const auto open = support::HookImport<decltype(CreateFileA)>(
        GetModuleHandleA(nullptr), "CreateFileA",
        [&](auto original, LPCSTR name, DWORD wanted, DWORD share, auto* security, DWORD disposition,
            auto... more) {
            access |= wanted;
            EXPECT_EQ(disposition, OPEN_EXISTING);
            return original(name, wanted, share, security, disposition, more...);
        });
    EXPECT_EQ(Set(R"({"desktopManagement":{"enabled":true}})", {"--what-if"}).errors, "");
    EXPECT_EQ(access, GENERIC_READ);
}

TEST_F(DomainSet, RefusesAScriptThatMayNotBeWrittenBeforeItWritesAnything)
{
    const auto open = support::HookImport<decltype(CreateFileA)>(
        GetModuleHandleA(nullptr), "CreateFileA",
        [](auto original, LPCSTR name, DWORD access, DWORD share, auto* security, DWORD disposition,
           auto... more) {
            if (disposition != OPEN_ALWAYS)
                return original(name, access, share, security, disposition, more...);
            SetLastError(ERROR_ACCESS_DENIED);
            return INVALID_HANDLE_VALUE;
        });
    const Answer answer = Set(R"({"snmp":{"setsEnabled":true},"desktopManagement":{"enabled":true}})");
    EXPECT_EQ(answer.code, ExitCode::Failed);
    EXPECT_EQ(answer.errors,
              "vtncfg: desktopManagement.loginScript: the file cannot be opened or made; check "
              "who may do that\n");
    EXPECT_EQ(Writes(), std::vector<std::string>());
}

} // namespace
