// A connection by TCP, made by the program. Sockets are used directly: the blocking mode of
// QTcpSocket gives a connection up that is not made within one slice of waiting, and looks names
// up without being able to end.
#pragma once

#include "base/OwnedDescriptor.h"
#include "sources/Resolver.h"
#include "sources/Wait.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

class TcpStream {
public:
    // False when that failed, problem() says why, or when the program is asked to end.
    bool connect(const std::string& host, unsigned port, const Wait& wait);
    bool send(std::string_view bytes, const Wait& wait);

    // The next bytes, as soon as there are any, valid until the next call; none at the end, after a
    // failure, after so many seconds without any (0 for never), and when the program is asked to
    // end.
    std::span<const std::uint8_t> receive(double longestSilence, const Wait& wait);

    const std::string& problem() const { return problemText; }
    // Whether the other end has closed the connection in order.
    bool isAtEnd() const { return atEnd; }
    // Whether it has closed it in any way.
    bool isClosedByPeer() const { return closedByPeer; }

private:
    bool connectTo(const Address& address, const Wait& wait);
    bool finishConnecting(const Wait& wait);
    bool fail(int error);

    OwnedDescriptor socket;
    std::string problemText;
    bool atEnd = false;
    bool closedByPeer = false;
    std::array<std::uint8_t, 1 << 14> buffer{};
};
