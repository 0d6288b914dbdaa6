// Finds the stand-ins in the build tree.
#include "StandIn.h"

#include "support/ProgramPath.h"

std::filesystem::path BuiltFile(const std::string& relative)
{
    return support::BesideThisProgram("..\\..\\demo\\" + relative);
}

StandIn::StandIn(const std::string& relative) : m_library(LoadLibraryA(BuiltFile(relative).string().c_str()))
{
    if (!m_library)
        throw std::runtime_error("does not load: " + relative);
}
