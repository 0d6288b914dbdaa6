// Edits the login script through the profile engine, line by line.
#include "desktop/core/LoginScript.h"

#include "desktop/core/ProfileEngine.h"
#include "sysaccess/core/ConfigurationError.h"
#include "sysaccess/core/Handles.h"

#include <cstring>
#include <initializer_list>
#include <optional>
#include <string.h>
#include <windows.h>

namespace {

constexpr char batchExtension[] = ".BAT";

constexpr char firstLine[] =
    "rem VORTAN: The following lines were inserted by the Norvale Lumora Management Agents";
constexpr char lastLine[] = "rem End of VORTAN section";
// Older releases spared Windows NT the call: they jumped over it to the label.
constexpr char systemTest[] = "if \"%OS%\" == \"Windows_NT\" goto vtnend";
constexpr char label[] = ":vtnend";

void Require(std::int16_t status)
{
    if (status != PROF_OK)
        throw ConfigurationError{IDS_SCRIPT_UPDATE_FAILED};
}

// The script while the profile engine has it open, as plain lines.
class ScriptLines
{
  public:
    explicit ScriptLines(const std::string& path)
    {
        Require(ProfileOpen(path.c_str(), m_request));
        m_request.format = "%s"; // a line is the key alone
    }
    ~ScriptLines() { ProfileClose(m_request); }
    ScriptLines(const ScriptLines&) = delete;
    ScriptLines& operator=(const ScriptLines&) = delete;

    // Performs one operation on each line. One that fails ends the series and nothing more, on purpose: the
    // script is saved as far as it has been edited.
    void ForEach(ProfileOperation operation, std::initializer_list<const char*> lines)
    {
        m_request.operation = operation;
        for (const char* const line : lines) {
            m_request.key = line;
            if (ProfileExecute(m_request) != PROF_OK)
                return;
        }
    }

    void Save() { Require(ProfileSave(m_request)); }

  private:
    ProfileRequest m_request{};
};

// Runs the client from the NETLOGON share and passes it the path of that share.
std::string ClientCall(const std::string& computerName)
{
    const std::string share = "\\\\" + computerName + "\\netlogon";
    return share + "\\vtnclnt " + share;
}

// Also before the block is put in, so that it is never there twice.
void RemoveBlock(const std::string& path, const std::string& clientCall)
{
    ScriptLines script(path);
    script.ForEach(PROF_DELETE_FIRST, {firstLine, systemTest, clientCall.c_str(), label, lastLine});
    script.Save();
}

void InsertBlock(const std::string& path, const std::string& clientCall)
{
    ScriptLines script(path);
    // Each goes to the top, so the last one comes first.
    script.ForEach(PROF_INSERT_FIRST, {lastLine, clientCall.c_str(), firstLine});
    script.Save();
}

// Opens a file, which is made when it is not there, and closes it again. Nothing when that is refused, else
// whether it was made.
std::optional<bool> OpenOrCreate(const std::string& path)
{
    const UniqueObject file =
        OwnUnlessInvalid(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                     OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    // A file that was there is opened with an error code all the same.
    const bool isNew = GetLastError() == ERROR_SUCCESS;
    return file ? std::optional(isNew) : std::nullopt;
}

} // namespace

bool IsBatchFile(const std::string& path)
{
    constexpr std::size_t length = sizeof batchExtension - 1;
    return path.size() >= length && _stricmp(path.c_str() + path.size() - length, batchExtension) == 0;
}

bool IsUsableLoginScript(const std::string& path)
{
    if (!IsBatchFile(path))
        return false;
    const std::optional<bool> isNew = OpenOrCreate(path);
    if (isNew == true)
        DeleteFileA(path.c_str());
    return isNew.has_value();
}

void UpdateLoginScript(const std::string& path, const std::string& computerName, bool isOn)
{
    const std::string clientCall = ClientCall(computerName);
    RemoveBlock(path, clientCall);
    if (isOn)
        InsertBlock(path, clientCall);
}
