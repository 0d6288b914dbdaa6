// The settings of this machine as one document.
#pragma once

#include "command/Document.h"
#include "command/Section.h"

#include <memory>
#include <string>
#include <vector>

class Machine
{
  public:
    // Knows the sections; reads nothing yet.
    Machine();

    // The schema of the document, the same on every machine.
    [[nodiscard]] Json Schema() const;

    // Reads all settings. Throws CommandError when some may not be read.
    void Load();
    // The document: every section that this machine has.
    [[nodiscard]] Json Show() const;
    // What differs between the machine as it was loaded and as it is to be.
    [[nodiscard]] std::vector<MemberChange> Changes() const;

    // Takes over what the document says; writes nothing. Throws CommandError for what cannot be.
    void Take(const Json& document);
    // Writes what has changed, in the order in which the applet saves its pages, and leaves alone what is
    // stored just so already. Throws CommandError, which says what had been written before.
    void Save();

  private:
    [[nodiscard]] Section& Find(const std::string& name);
    [[nodiscard]] bool IsChanged(const Section& section) const;
    void SaveSections();
    // What has been written so far, as the machine shows it now.
    [[nodiscard]] std::string WrittenSoFar() const;

    std::vector<std::unique_ptr<Section>> m_sections;
    Json m_loaded;
};

// Names of the top-level members in which there are changes, in their order.
[[nodiscard]] Json ChangedSections(const std::vector<MemberChange>& changes);
