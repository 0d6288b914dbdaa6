// What the Storage page configures.
#pragma once

#include "command/MemberTable.h"
#include "pages/core/StorageSettings.h"

class StorageSection : public TableSection<StorageSettings>
{
  public:
    StorageSection();

    void Load() override { m_settings.Load(); }
    void Save() override { m_settings.Save(); }
};
