// Encodes traps by ASN.1's basic encoding rules: each element is a tag, a length and its content.
#include "SnmpTrap.h"

// Before windows.h, which brings an older one otherwise.
#include <winsock2.h>

#include "../support/Error.h"

namespace demo {

namespace {

enum Tag : unsigned char
{
    IntegerTag = 0x02,
    OctetStringTag = 0x04,
    ObjectIdTag = 0x06,
    SequenceTag = 0x30,
    IpAddressTag = 0x40,
    TimeTicksTag = 0x43,
    TrapTag = 0xA4,
};

// Object ids, encoded: 1.3.6.1.4.1.32473.1 and .1.1, below the number that is free for examples.
constexpr const char* agentId = "\x2B\x06\x01\x04\x01\x81\xFD\x59\x01";
constexpr const char* textId = "\x2B\x06\x01\x04\x01\x81\xFD\x59\x01\x01";

constexpr std::uint32_t version1 = 0;
constexpr std::uint32_t enterpriseSpecific = 6;
constexpr std::uint32_t testTrap = 1;
constexpr std::uint32_t thisMachine = 0x7F000001; // 127.0.0.1

std::string Length(size_t length)
{
    if (length < 0x80)
        return {static_cast<char>(length)};
    return {'\x82', static_cast<char>(length >> 8), static_cast<char>(length)};
}

std::string Element(Tag tag, const std::string& content)
{
    return static_cast<char>(tag) + Length(content.size()) + content;
}

// The highest byte first, after a zero that keeps it from being taken for negative.
std::string Number(std::uint32_t number)
{
    return {'\0', static_cast<char>(number >> 24), static_cast<char>(number >> 16),
            static_cast<char>(number >> 8), static_cast<char>(number)};
}

class Socket
{
  public:
    Socket()
    {
        WSADATA data{};
        Require(WSAStartup(MAKEWORD(2, 2), &data), "starting Windows Sockets");
        m_socket = socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
    }
    ~Socket()
    {
        closesocket(m_socket); // an invalid one is refused, which does no harm
        WSACleanup();
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    [[nodiscard]] SOCKET Get() const { return m_socket; }

  private:
    SOCKET m_socket;
};

} // namespace

std::string EncodeTrap(const std::string& text, std::uint32_t upTime)
{
    const std::string variable = Element(ObjectIdTag, textId) + Element(OctetStringTag, text);
    const std::string trap = Element(ObjectIdTag, agentId) + Element(IpAddressTag, {127, 0, 0, 1}) +
                             Element(IntegerTag, Number(enterpriseSpecific)) +
                             Element(IntegerTag, Number(testTrap)) + Element(TimeTicksTag, Number(upTime)) +
                             Element(SequenceTag, Element(SequenceTag, variable));
    return Element(SequenceTag, Element(IntegerTag, Number(version1)) + Element(OctetStringTag, "public") +
                                    Element(TrapTag, trap));
}

void SendToPort(const std::string& trap, unsigned short port)
{
    const Socket socket;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(thisMachine);
    const int sent = sendto(socket.Get(), trap.data(), static_cast<int>(trap.size()), 0,
                            reinterpret_cast<const sockaddr*>(&address), sizeof address);
    if (sent == SOCKET_ERROR)
        Require(WSAGetLastError(), "sending a trap");
}

} // namespace demo
