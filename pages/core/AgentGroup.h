// The sub-agents of one agent service as its key holds them, without a window. The Services page shows and
// switches them.
#pragma once

#include "sysaccess/core/AgentServices.h"

#include <optional>
#include <string>
#include <vector>

// One subkey of the service's key.
struct AgentEntry
{
    std::string name;                   // of the subkey
    std::string displayName;            // what the user sees; empty when not listable
    bool active = false;                // started by the service
    bool listable = true;               // shown to the user at all
    std::optional<std::size_t> partner; // index of the sub-agent that is switched together with this one
};

// The sub-agents, and which of them are switched on; saving is the settings' business.
class AgentGroup
{
  public:
    // Reads the sub-agents of `service`, which is kept by address. Throws ConfigurationError when the key,
    // its parameters or its subkeys cannot be read.
    explicit AgentGroup(const AgentService& service);

    // What the group was made of.
    [[nodiscard]] const AgentService& Service() const { return *m_service; }
    // In the registry's order.
    [[nodiscard]] const std::vector<AgentEntry>& Entries() const { return m_entries; }

    // Switches one sub-agent and, with it, its partner.
    void SetActive(std::size_t index, bool active);
    // Names of the active sub-agents, in the registry's order, at most `limit` of them.
    [[nodiscard]] std::vector<std::string> ActiveNames(std::size_t limit) const;

  private:
    void LoadEntries();
    void JoinPair(const AgentPair& pair);
    [[nodiscard]] std::optional<std::size_t> IndexOf(const char* name) const;

    const AgentService* m_service;
    std::vector<AgentEntry> m_entries;
};
