// SNMP traps over UDP, as far as a test trap needs them.
#pragma once

#include <cstdint>
#include <string>

namespace demo {

// The bytes of an SNMP version 1 trap of the community "public" that says `text`; `upTime` is in hundredths
// of a second.
[[nodiscard]] std::string EncodeTrap(const std::string& text, std::uint32_t upTime);

// Sends the bytes of a trap to a UDP port of this machine, where somebody may listen or not. Throws
// std::system_error.
void SendToPort(const std::string& trap, unsigned short port);

} // namespace demo
