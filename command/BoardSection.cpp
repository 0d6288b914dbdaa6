// The members of "board".
#include "command/BoardSection.h"

#include <array>

namespace {

constexpr Member<BoardData> BatteryMember(const char* name, const char* description)
{
    return {name, description, BooleanSchema,
            [](const BoardData& board) -> Json {
                return OffersBattery(board) ? Json(board.battery != 0) : Json();
            },
            [](BoardData& board, const Json& value, const std::string& path) {
                const bool isWanted = RequireBoolean(value, path);
                if (!OffersBattery(board))
                    RefuseMember(path, "this board has no battery that can be switched");
                board.battery = isWanted ? 1 : 0;
            }};
}

constexpr std::array<Member<BoardData>, 3> boardMembers = {{
    BatteryMember("battery", "The board's battery is on; there only where the board has one."),
    FlagMember<&BoardData::remoteAlerting, false, BoardData>("remoteAlerting",
                                                             "The board sends alerts by itself."),
    FlagMember<&BoardData::serverResetPending, false, BoardData>("serverResetPending",
                                                                 "A reset of the server is pending."),
}};
static_assert(boardMembers.size() == boardSettings.size());

} // namespace

BoardSection::BoardSection()
    : TableSection("board", "The Remote Lumora page; there only where the board answers.", boardMembers)
{
}

void BoardSection::Load()
{
    m_answers = ReadBoardData(m_settings) == ERROR_SUCCESS;
}

std::string BoardSection::WhyNotHere() const
{
    return m_answers ? "" : "no remote management board answers on this machine";
}

// As the page does: plain numbers, and 0 for a battery that the board does not offer.
void BoardSection::Save()
{
    BoardData data{};
    for (DWORD BoardData::*setting : boardSettings)
        data.*setting = m_settings.*setting != 0 ? 1 : 0;
    if (!OffersBattery(m_settings))
        data.battery = 0;
    const DWORD status = WriteBoardData(data);
    if (status != ERROR_SUCCESS)
        throw CommandError(ExitCode::Failed, Name() + ": the board did not take its settings (code " +
                                                 std::to_string(status) + "); try again when it answers.");
}
