// Login scripts before, while and after desktop management is on.
#include "desktop/core/LoginScript.h"

#include "ScriptTexts.h"
#include "support/Expect.h"
#include "support/TestDirectory.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>

namespace {

using Script = std::optional<std::string>; // nothing: there is no such file

struct Triple
{
    const char* name;
    Script before;
    Script on;
    Script off; // what the script was before, as far as the block was not in it
};

void PrintTo(const Triple& triple, std::ostream* out)
{
    *out << triple.name;
}

std::string InSmallLetters(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 'a' - 'A') : c; });
    return text;
}

// Each blank as three, and some in front of every line.
std::string WithRunsOfBlanks(const std::string& text)
{
    std::string spaced = " \t";
    for (const char c : text) {
        spaced += c == ' ' ? " \t " : std::string(1, c);
        if (c == '\n')
            spaced += " \t";
    }
    return spaced.substr(0, spaced.size() - 2);
}

std::string WithLineFeedsOnly(std::string text)
{
    std::erase(text, '\r');
    return text;
}

std::string TwoMegabytes()
{
    std::string script;
    for (int line = 0; script.size() < 2 * 1024 * 1024; ++line)
        script += "rem line " + std::to_string(line) + " of a script that has grown over the years\r\n";
    return script;
}

const std::string trailingBlanks = beginLine.substr(0, beginLine.size() - 2) + " \r\n";
const std::string otherServersCall = "\\\\SRV2\\netlogon\\vtnclnt \\\\SRV2\\netlogon\r\n";
// "echo" and a text whose second bytes are a backslash, a bar and a bracket, in code page 932.
const std::string japanese = "echo \x83\x5C\x83\x7C \x93\xFA\x96\x7B\x8C\xEA\r\nrem \x83\x5B\r\n";
const std::string belowBracket = "[drives]\r\n" + block + house;

const Triple triples[] = {
    {"NoScript", std::nullopt, block, std::nullopt},
    {"EmptyScript", "", block, std::nullopt},
    {"ScriptOfBlankLines", "\r\n \r\n", block, std::nullopt},
    {"HouseScript", house, block + house, house},
    {"OnlyTheBlock", block, block, std::nullopt},
    {"OnlyTheOldBlock", oldBlock, block, std::nullopt},
    {"BlockInFront", block + house, block + house, house},
    {"OldBlockInFront", oldBlock + house, block + house, house},
    {"BlockAtTheEnd", house + block, block + house, house},
    {"OldBlockAtTheEnd", house + oldBlock, block + house, house},
    {"BlockInOtherOrder", house + endLine + callLine + beginLine, block + house, house},
    {"HalfABlock", callLine + house, block + house, house},
    // Of lines that are there twice the first ones go.
    {"BlockTwice", block + block + house, block + block + house, block + house},
    {"BlockAroundTheHouseScript", block + house + block, block + house + block, house + block},
    {"BlockInSmallLetters", InSmallLetters(block) + house, block + house, house},
    {"BlockWithRunsOfBlanks", WithRunsOfBlanks(block) + house, block + house, house},
    {"LineWithTrailingBlanksStays", trailingBlanks + house, block + trailingBlanks + house,
     trailingBlanks + house},
    {"AnotherServersCallStays", otherServersCall + house, block + otherServersCall + house,
     otherServersCall + house},
    {"BlockBelowABracketStays", belowBracket, block + belowBracket, belowBracket},
    {"BlockBelowACommentOfTheEngineGoes", ";;\r\n" + block + house, block + ";;\r\n" + house,
     ";;\r\n" + house},
    {"NoFinalLineEnding", house + "exit", block + house + "exit\r\n", house + "exit\r\n"},
    {"NoFinalLineEndingBehindTheBlock", house + block.substr(0, block.size() - 2), block + house, house},
    {"LineFeedsOnly", WithLineFeedsOnly(house), block + house, house},
    {"BlockWithLineFeedsOnly", WithLineFeedsOnly(block + house), block + house, house},
    {"BlankLinesAtTheEnd", house + "\r\n\r\n", block + house, house},
    {"TwoMegabytes", TwoMegabytes(), block + TwoMegabytes(), TwoMegabytes()},
    {"CodePage932", japanese, block + japanese, japanese},
};

class LoginScriptTriple : public testing::TestWithParam<Triple>
{
  protected:
    LoginScriptTriple()
    {
        if (GetParam().before)
            support::WriteBytes(m_path, *GetParam().before);
    }

    // Compared as a whole: two megabytes are not to be printed.
    void ExpectScript(const Script& expected, support::Location where = support::Location::current())
    {
        const Script found = support::ReadBytes(m_path);
        if (found != expected)
            support::ReportFailure(where, "the script is\n" + found.value_or("(none)").substr(0, 1000) +
                                              "\ninstead of\n" + expected.value_or("(none)").substr(0, 1000));
    }

    support::TestDirectory m_directory;
    std::string m_path = m_directory.File("LOGIN.BAT");
};

TEST_P(LoginScriptTriple, SwitchingOnPutsTheBlockInFrontOnce)
{
    UpdateLoginScript(m_path, "SRV1", true);
    ExpectScript(GetParam().on);
}

TEST_P(LoginScriptTriple, SwitchingOnAgainChangesNothing)
{
    for (int i = 0; i < 6; ++i)
        UpdateLoginScript(m_path, "SRV1", true);
    ExpectScript(GetParam().on);
}

TEST_P(LoginScriptTriple, SwitchingOffGivesTheScriptBack)
{
    UpdateLoginScript(m_path, "SRV1", true);
    UpdateLoginScript(m_path, "SRV1", false);
    ExpectScript(GetParam().off);
}

INSTANTIATE_TEST_SUITE_P(Scripts, LoginScriptTriple, testing::ValuesIn(triples),
                         [](const auto& script) { return std::string(script.param.name); });

} // namespace
