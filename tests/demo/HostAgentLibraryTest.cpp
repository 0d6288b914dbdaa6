// The host agent library: a trap goes to the receiver and into the log.

// Before windows.h, which brings an older one otherwise.
#include <winsock2.h>

#include "demo/hostagent/HostAgentLibrary.h"
#include "StandIn.h"

#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>

namespace {

std::string Content(const std::filesystem::path& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A receiver of traps on a free UDP port of this machine, known to the library while it lives.
class Receiver
{
  public:
    Receiver()
    {
        WSADATA data{};
        WSAStartup(MAKEWORD(2, 2), &data);
        m_socket = socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(0x7F000001);
        int size = sizeof address;
        if (bind(m_socket, reinterpret_cast<const sockaddr*>(&address), size) != 0 ||
            getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size) != 0)
            throw std::runtime_error("no UDP port");
        const DWORD patience = 5000; // milliseconds
        setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&patience),
                   sizeof patience);
        m_port = std::to_string(ntohs(address.sin_port));
        SetEnvironmentVariableA(receiverPortVariable, m_port.c_str());
    }
    ~Receiver()
    {
        SetEnvironmentVariableA(receiverPortVariable, nullptr);
        closesocket(m_socket);
        WSACleanup();
    }
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    [[nodiscard]] const std::string& Port() const { return m_port; }

    // The next datagram; empty when none comes.
    [[nodiscard]] std::string Receive() const
    {
        std::array<char, 1500> data{};
        const int size = recv(m_socket, data.data(), data.size(), 0);
        return {data.data(), static_cast<size_t>(size > 0 ? size : 0)};
    }

  private:
    SOCKET m_socket;
    std::string m_port;
};

// The bytes of `hex`, two digits each, with blanks in between.
std::string Bytes(const std::string& hex)
{
    std::string bytes;
    for (size_t i = 0; i < hex.size(); i += 3)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

TEST(HostAgentLibrary, SendsAnSnmpTrapToTheReceiver)
{
    const Receiver receiver;
    const StandIn library("VTNMHOST.DLL");

    EXPECT_EQ(library.Get<decltype(sendVtnUserTrap)>("sendVtnUserTrap")("hello"), 0u);

    std::string trap = receiver.Receive();
    ASSERT_EQ(trap.size(), 80);
    trap.replace(53, 4, 4, '\0'); // the time since the system's start
    EXPECT_EQ(trap, Bytes("30 4E 02 05 00 00 00 00 00 04 06 70 75 62 6C 69 63 A4 3D "
                          "06 09 2B 06 01 04 01 81 FD 59 01 40 04 7F 00 00 01 02 05 00 00 00 00 06 "
                          "02 05 00 00 00 00 01 43 05 00 00 00 00 00 "
                          "30 15 30 13 06 0A 2B 06 01 04 01 81 FD 59 01 01 04 05 68 65 6C 6C 6F"));
    std::filesystem::remove(BuiltFile("traps.log"));
}

TEST(HostAgentLibrary, SendsALongText)
{
    const Receiver receiver;
    const StandIn library("VTNMHOST.DLL");

    EXPECT_EQ(library.Get<decltype(sendVtnUserTrap)>("sendVtnUserTrap")(std::string(300, 'x').c_str()), 0u);

    EXPECT_TRUE(receiver.Receive().ends_with(Bytes("04 82 01 2C") + std::string(300, 'x')));
    std::filesystem::remove(BuiltFile("traps.log"));
}

TEST(HostAgentLibrary, LogsWhereEachTrapWent)
{
    const auto log = BuiltFile("traps.log");
    std::filesystem::remove(log);
    const StandIn library("VTNMHOST.DLL");
    const auto send = library.Get<decltype(sendVtnUserTrap)>("sendVtnUserTrap");
    std::string port;
    {
        const Receiver receiver;
        port = receiver.Port();
        EXPECT_EQ(send("first trap"), 0u);
    }
    EXPECT_EQ(send("second trap"), 0u);

    const std::string lines = Content(log);
    EXPECT_NE(lines.find(" sent to UDP port " + port + ": first trap\n"), std::string::npos) << lines;
    EXPECT_NE(lines.find(" nobody receives traps here: second trap\n"), std::string::npos) << lines;
    std::filesystem::remove(log);
}

TEST(HostAgentLibrary, LogsEachTrapBesideItself)
{
    const auto log = BuiltFile("traps.log");
    std::filesystem::remove(log);
    const StandIn library("VTNMHOST.DLL");
    const auto send = library.Get<decltype(sendVtnUserTrap)>("sendVtnUserTrap");

    EXPECT_EQ(send("first trap"), 0u);
    EXPECT_EQ(send("second trap"), 0u);

    const std::string lines = Content(log);
    EXPECT_NE(lines.find(" first trap\n"), std::string::npos) << lines;
    EXPECT_LT(lines.find(" first trap\n"), lines.find(" second trap\n")) << lines;
    std::filesystem::remove(log);
}

TEST(HostAgentLibrary, ReturnsAnErrorWithoutALog)
{
    const auto log = BuiltFile("traps.log");
    std::filesystem::remove(log);
    std::filesystem::create_directory(log);
    const StandIn library("VTNMHOST.DLL");

    EXPECT_NE(library.Get<decltype(sendVtnUserTrap)>("sendVtnUserTrap")("lost trap"), 0u);

    std::filesystem::remove(log);
}

} // namespace
