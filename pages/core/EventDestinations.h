// To which computers, and with which account, the host agent sends its events, without a window.
#pragma once

#include <span>
#include <string>
#include <vector>
#include <windows.h>

// A password as it is stored: byte i combined with i + 32 by exclusive or, and a zero at the end. A character
// that equals the number it is combined with becomes a zero, too: what follows it is lost when it is read.
[[nodiscard]] std::vector<BYTE> ScramblePassword(const std::string& password);

// The reverse, up to the first zero before or after the combination, or the end of the data.
[[nodiscard]] std::string DescramblePassword(std::span<const BYTE> stored);

// What the user has touched, one bit for each part: what Save writes.
enum EventChange : DWORD
{
    ComputersChanged = 0x1,
    UserNameChanged = 0x2,
    PasswordChanged = 0x4,
};

// The settings of the host agent. Each part that is absent or of another type is empty.
struct EventDestinations
{
    // Throws ConfigurationError.
    void Load();
    // Writes what `changes` (EventChange bits) says; throws ConfigurationError.
    void Save(DWORD changes) const;

    std::vector<std::string> computers; // in the user's order
    std::string userName;
    std::string password;
};
