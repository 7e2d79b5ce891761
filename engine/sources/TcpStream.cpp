#include "sources/TcpStream.h"

#include "sources/Resolver.h"

#include <QByteArray>

#include <asio/buffer.hpp>
#include <asio/write.hpp>

#include <netinet/tcp.h>

namespace {

constexpr double longestConnecting = 10;    // seconds, for each address
constexpr double longestSending = 10;

// So that a peer that is gone without a word is noticed before the silence is long.
void keepAlive(asio::ip::tcp::socket& socket)
{
    const auto set = [&socket](int level, int option, int value) {
        ::setsockopt(socket.native_handle(), level, option, &value, sizeof value);
    };
    set(SOL_SOCKET, SO_KEEPALIVE, 1);
    set(IPPROTO_TCP, TCP_KEEPIDLE, 30);
    set(IPPROTO_TCP, TCP_KEEPINTVL, 10);
    set(IPPROTO_TCP, TCP_KEEPCNT, 3);
}

}    // namespace

bool TcpStream::isClosedByPeer() const
{
    return isAtEnd() || lastError == asio::error::connection_reset ||
           lastError == asio::error::broken_pipe;
}

bool TcpStream::isDone(const IoResult& result, const std::string& lateText)
{
    lastError = result.error;
    problemText = result.isLate ? lateText
                  : isAtEnd()   ? "the other end closed it"
                                : result.problem();
    return !lastError;
}

bool TcpStream::connect(const std::string& host, unsigned port, const Wait& wait)
{
    lastError.clear();
    const Resolved resolved = resolve(host, wait);
    std::string firstProblem = resolved.problem;
    for (const asio::ip::address& address : resolved.addresses) {
        if (connectTo({address, static_cast<asio::ip::port_type>(port)}, wait)) {
            keepAlive(socket);
            return true;
        }
        firstProblem = firstProblem.empty() ? problemText : firstProblem;
    }
    problemText = firstProblem;
    return false;
}

bool TcpStream::connectTo(const asio::ip::tcp::endpoint& endpoint, const Wait& wait)
{
    asio::error_code ignored;
    socket.close(ignored);
    const auto begin = [&](auto done) { socket.async_connect(endpoint, done); };
    return isDone(finish(context, socket, wait, longestConnecting, begin),
                  "the host does not answer");
}

bool TcpStream::send(std::string_view bytes, const Wait& wait)
{
    const auto begin = [&](auto done) { asio::async_write(socket, asio::buffer(bytes), done); };
    return isDone(finish(context, socket, wait, longestSending, begin),
                  "the host takes no request");
}

std::span<const std::uint8_t> TcpStream::receive(double longestSilence, const Wait& wait)
{
    const auto begin = [&](auto done) { socket.async_receive(asio::buffer(buffer), done); };
    const IoResult result = finish(context, socket, wait, longestSilence, begin);
    const std::string seconds = QByteArray::number(longestSilence).toStdString();
    return isDone(result, "nothing came for " + seconds + " s")
               ? std::span(buffer).first(result.bytes)
               : std::span<const std::uint8_t>();
}
