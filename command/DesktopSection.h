// What the Desktop Mgmt page configures.
#pragma once

#include "command/MemberTable.h"
#include "desktop/core/DesktopManagement.h"

class DesktopSection : public TableSection<DesktopManagement>
{
  public:
    DesktopSection();

    void Load() override;
    [[nodiscard]] std::string WhyNotHere() const override;
    void Take(const Json& wanted) override;
    void Prepare() override;
    void Save() override;

  private:
    [[nodiscard]] bool IsScriptChanged() const { return m_settings.scriptPath != m_loaded.scriptPath; }
    [[nodiscard]] bool IsSwitched() const { return m_settings.isOn != m_loaded.isOn; }
    void RequireUsableScript() const;
    void TakeSwitchedOff();

    bool m_isHere = false;
    DesktopManagement m_loaded;
};
