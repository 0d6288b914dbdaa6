// What the Services page configures: which sub-agents each agent service starts.
#pragma once

#include "command/Section.h"
#include "pages/core/ServicesSettings.h"

#include <map>

class AgentsSection : public Section
{
  public:
    AgentsSection();

    [[nodiscard]] Json Schema() const override;
    void Load() override;
    [[nodiscard]] Json Show() const override;
    void Take(const Json& wanted) override;
    void Save() override;

  private:
    // What the document says of the sub-agents of one service, by their indexes.
    using Switches = std::map<std::size_t, bool>;

    [[nodiscard]] AgentGroup& GroupOf(const std::string& service);
    void TakeGroup(AgentGroup& group, const Json& wanted, const std::string& path);

    ServicesSettings m_settings;
};
