// A connection by TCP, made by the program. Asio does the work of sockets and serial lines here:
// its operations can be cancelled at any time.
#pragma once

#include "sources/Operation.h"

#include <asio/ip/tcp.hpp>

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
    bool isAtEnd() const { return lastError == asio::error::eof; }
    // Whether it has closed it in any way.
    bool isClosedByPeer() const;

private:
    bool connectTo(const asio::ip::tcp::endpoint& endpoint, const Wait& wait);
    bool isDone(const IoResult& result, const std::string& lateText);

    asio::io_context context;
    asio::ip::tcp::socket socket{context};
    std::string problemText;
    asio::error_code lastError;
    std::array<std::uint8_t, 1 << 14> buffer{};
};
