// What the SNMP Settings page configures.
#pragma once

#include "command/MemberTable.h"
#include "pages/core/SnmpSettings.h"

class SnmpSection : public TableSection<SnmpSettings>
{
  public:
    SnmpSection();

    void Load() override;
    void Take(const Json& wanted) override;
    void Save() override;

  private:
    void RequireWritten() const;
};
