// What the Remote Lumora page configures.
#pragma once

#include "command/MemberTable.h"
#include "pages/core/BoardLibrary.h"

class BoardSection : public TableSection<BoardData>
{
  public:
    BoardSection();

    void Load() override;
    [[nodiscard]] std::string WhyNotHere() const override;
    void Save() override;

  private:
    bool m_answers = false;
};
