// Directories of one test, on a drive and on the network, and the bytes of the files in them.
#pragma once

#include <optional>
#include <string>
#include <windows.h>

namespace support {

// The file's bytes; nothing when there is no such file.
[[nodiscard]] std::optional<std::string> ReadBytes(const std::string& path);
// Makes the file or replaces its bytes. Throws std::runtime_error when Windows refuses.
void WriteBytes(const std::string& path, const std::string& bytes);
[[nodiscard]] bool FileExists(const std::string& path);

// An empty directory with a name of its own. At its end it is deleted with everything in it, read-only files
// too.
class TestDirectory
{
  public:
    TestDirectory();
    ~TestDirectory();
    TestDirectory(const TestDirectory&) = delete;
    TestDirectory& operator=(const TestDirectory&) = delete;

    // Without a backslash at its end.
    [[nodiscard]] const std::string& Path() const { return m_path; }
    // The path of a file or directory in it.
    [[nodiscard]] std::string File(const std::string& name) const { return m_path + "\\" + name; }

  private:
    std::string m_path;
};

// The same on the network. Under Wine and natively it is a share of a machine that exists in the test alone:
// Wine looks for such machines below its prefix, native builds among the temporary files. Windows is expected
// to reach a temporary directory of this machine through the administrative share of its drive.
class NetworkDirectory
{
  public:
    explicit NetworkDirectory(const std::string& share);
    ~NetworkDirectory();
    NetworkDirectory(const NetworkDirectory&) = delete;
    NetworkDirectory& operator=(const NetworkDirectory&) = delete;

    // "\\MACHINE\SHARE", on Windows with directories between.
    [[nodiscard]] const std::string& Path() const { return m_path; }
    [[nodiscard]] std::string File(const std::string& name) const { return m_path + "\\" + name; }

  private:
    std::string m_machine; // the directory that stands for it
    std::string m_path;
};

// An environment variable of this process that has another value for the life of this object. One that was
// absent is absent again afterwards.
class SavedVariable
{
  public:
    SavedVariable(const std::string& name, const std::string& value);
    ~SavedVariable();
    SavedVariable(const SavedVariable&) = delete;
    SavedVariable& operator=(const SavedVariable&) = delete;

  private:
    std::string m_name;
    std::optional<std::string> m_saved;
};

} // namespace support
