// One top-level member of the document: what one page of the applet configures.
#pragma once

#include "command/Json.h"

#include <string>

// Load comes first, and once. Show then says what the machine has, or what it will have once Save is called:
// Take puts the wanted values in place of the loaded ones and writes nothing.
class Section
{
  public:
    // `name` is the member's.
    explicit Section(const char* name) : m_name(name) {}
    virtual ~Section() = default;
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;

    // The member's name in the document.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    // The schema of its value.
    [[nodiscard]] virtual Json Schema() const = 0;

    // Reads the settings. Throws ConfigurationError when they may not be read.
    virtual void Load() = 0;
    // Why this machine does not have the section, as the end of a sentence; empty when it has.
    [[nodiscard]] virtual std::string WhyNotHere() const { return {}; }
    // The value of the member.
    [[nodiscard]] virtual Json Show() const = 0;
    // What stands for a member that Show leaves out.
    [[nodiscard]] virtual Json Absent() const { return nullptr; }

    // Takes over the named members, and those that change with them. Throws CommandError for what cannot be.
    virtual void Take(const Json& wanted) = 0;
    // Finds out by trying whether what Take has changed can be written: called before anything is. Leaves no
    // trace. Throws CommandError.
    virtual void Prepare() {}
    // Writes what Take has changed. Throws ConfigurationError or CommandError; what was written stays.
    virtual void Save() = 0;

  protected:
    // Path of a member in the document.
    [[nodiscard]] std::string PathOf(const std::string& member) const { return m_name + "." + member; }

  private:
    std::string m_name;
};
