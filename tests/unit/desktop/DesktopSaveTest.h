// The save of desktop management, for its tests.
#pragma once

#include "ScriptTexts.h"
#include "TestDomain.h"

#include "support/Expect.h"
#include "sysaccess/core/ConfigurationError.h"

class DesktopManagementSave : public TestDomain
{
  protected:
    static constexpr DWORD everything = SwitchChanged | ScriptChanged;

    // The block as this machine writes it.
    static std::string Block()
    {
        const std::string share = "\\\\" + ComputerName() + "\\netlogon";
        return beginLine + share + "\\vtnclnt " + share + "\r\n" + endLine;
    }

    void SwitchOn() const { Settings(true).Save(everything); }
    void SwitchOff() const { Settings(false).Save(everything); }

    // Fails the test at the caller's line unless the save throws this text.
    static void ExpectThrows(const DesktopManagement& settings, DWORD changes, ConfigurationError text,
                             support::Location where = support::Location::current())
    {
        try {
            settings.Save(changes);
            support::ReportFailure(where, "nothing was thrown");
        } catch (ConfigurationError error) {
            support::ExpectEqual(text, error, "error", where);
        }
    }
};
