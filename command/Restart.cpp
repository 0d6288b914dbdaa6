// The restart as lines on standard error.
#include "command/Restart.h"

#include "command/CodePage.h"
#include "command/ErrorTexts.h"
#include "resources/resource.h"
#include "sysaccess/core/AgentRestart.h"

namespace {

class RestartLines : public AgentRestartView
{
  public:
    explicit RestartLines(ErrorLines& lines) : m_lines(lines) {}

    [[nodiscard]] bool HasFailed() const { return m_hasFailed; }

    void OnStarting(const std::string& displayName) override
    {
        m_lines.Note("starting the " + ToUtf8(displayName) + " service");
    }
    void OnStopping(const std::string& displayName) override
    {
        m_lines.Note("stopping the " + ToUtf8(displayName) + " service");
    }
    void OnWaiting() override {}
    void OnStartFailed(const std::string& displayName) override
    {
        Fail(ServiceErrorText(IDS_CANNOT_START, displayName));
    }
    void OnStopFailed(const std::string& displayName) override
    {
        Fail(ServiceErrorText(IDS_CANNOT_STOP, displayName));
    }
    void OnHostUnknown() override
    {
        Fail("The host agent's service VtMgHost is not installed or may not be controlled. Run as an "
             "administrator, where the agents are installed.");
    }
    void OnNotControllable(DWORD hostState) override
    {
        Fail(ErrorText(IsPendingState(hostState) ? IDS_AGENTS_PENDING : IDS_AGENTS_UNKNOWN_STATE));
    }
    bool IsRestartWanted(DWORD /*hostState*/) override { return true; }
    void OnDone() override {}

  private:
    void Fail(const std::string& text)
    {
        m_lines.Error("restart: " + text);
        m_hasFailed = true;
    }

    ErrorLines& m_lines;
    bool m_hasFailed = false;
};

} // namespace

ExitCode RestartAgents(ErrorLines& lines)
{
    RestartLines view(lines);
    RestartAgentServices(view);
    return view.HasFailed() ? ExitCode::Failed : ExitCode::Done;
}
