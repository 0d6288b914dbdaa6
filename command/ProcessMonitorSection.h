// What the Process Monitor page configures: which processes the host agent watches.
#pragma once

#include "command/Section.h"
#include "pages/core/ProcessMonitorSettings.h"

#include <map>

class ProcessMonitorSection : public Section
{
  public:
    ProcessMonitorSection();

    [[nodiscard]] Json Schema() const override;
    void Load() override;
    [[nodiscard]] Json Show() const override;
    [[nodiscard]] Json Absent() const override;
    void Take(const Json& wanted) override;
    void Save() override;

  private:
    // Options by the names of processes, in lower case.
    using Options = std::map<std::string, BYTE>;

    [[nodiscard]] Options OptionsOf(const Json& wanted) const;
    void SetOption(const std::string& name, BYTE option);
    void MarkNewNames();
    // Into the order of the page's list.
    void Sort();

    std::vector<MonitoredProcess> m_processes;
    std::vector<std::string> m_newNames;
};
