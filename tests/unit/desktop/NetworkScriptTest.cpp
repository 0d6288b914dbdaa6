// Login scripts behind network paths.
#include "desktop/core/LoginScript.h"
#include "DesktopSaveTest.h"

namespace {

using support::FileExists;
using support::ReadBytes;

class NetworkScript : public DesktopManagementSave
{
  protected:
    support::NetworkDirectory m_network{"netlogon"};
};

TEST_F(NetworkScript, IsTriedWithoutLeavingAFileBehind)
{
    EXPECT_TRUE(IsUsableLoginScript(m_network.File("LOGIN.BAT")));
    EXPECT_FALSE(FileExists(m_network.File("LOGIN.BAT")));
    EXPECT_FALSE(IsUsableLoginScript(m_network.File("absent\\LOGIN.BAT")));
}

TEST_F(NetworkScript, AndItsClientAreSwitchedOnAndOffAgain)
{
    DesktopManagement settings = Settings(true);
    settings.scriptDirectory = m_network.Path();
    settings.scriptPath = m_network.File("LOGIN.BAT");
    settings.Save(everything);
    EXPECT_EQ(ReadBytes(settings.scriptPath), Block());
    EXPECT_EQ(ReadBytes(m_network.File("VTNCLNT.EXE")), "the client");
    EXPECT_TRUE(FileExists(m_network.File("VTNCLNT.INI")));
    settings.isOn = false;
    settings.Save(everything);
    EXPECT_FALSE(FileExists(settings.scriptPath));
    EXPECT_FALSE(FileExists(m_network.File("VTNCLNT.EXE")));
}

} // namespace
