#include "sources/TcpStream.h"

#include <cerrno>
#include <cstring>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>

namespace {

constexpr double longestConnecting = 10;    // seconds, for each address
constexpr double longestSending = 10;

// "60", "0.5"
std::string secondsText(double seconds)
{
    std::string text = std::to_string(seconds);
    text.erase(text.find_last_not_of('0') + 1);
    return text.back() == '.' ? text.substr(0, text.size() - 1) : text;
}

// So that a peer that is gone without a word is noticed before the silence is long.
void keepAlive(int socket)
{
    const auto set = [socket](int level, int option, int value) {
        ::setsockopt(socket, level, option, &value, sizeof value);
    };
    set(SOL_SOCKET, SO_KEEPALIVE, 1);
    set(IPPROTO_TCP, TCP_KEEPIDLE, 30);
    set(IPPROTO_TCP, TCP_KEEPINTVL, 10);
    set(IPPROTO_TCP, TCP_KEEPCNT, 3);
}

}    // namespace

bool TcpStream::fail(int error)
{
    problemText = std::strerror(error);
    closedByPeer = error == ECONNRESET || error == EPIPE;
    return false;
}

bool TcpStream::connect(const std::string& host, unsigned port, const Wait& wait)
{
    socket.close();
    atEnd = false;
    closedByPeer = false;
    const Resolved resolved = resolve(host, port, wait);
    std::string firstProblem = resolved.problem;
    for (const Address& address : resolved.addresses) {
        problemText.clear();
        if (connectTo(address, wait)) {
            return true;
        }
        firstProblem = firstProblem.empty() ? problemText : firstProblem;
    }
    problemText = firstProblem;
    return false;
}

bool TcpStream::connectTo(const Address& address, const Wait& wait)
{
    socket =
        OwnedDescriptor(::socket(address.family(), SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!socket.isOpen()) {
        return fail(errno);
    }
    keepAlive(socket.get());
    if (::connect(socket.get(), address.get(), address.length) == 0) {
        return true;
    }
    return errno == EINPROGRESS ? finishConnecting(wait) : fail(errno);
}

bool TcpStream::finishConnecting(const Wait& wait)
{
    const Wait::End end = wait.forDescriptor(socket.get(), POLLOUT, deadlineIn(longestConnecting));
    if (end != Wait::End::ready) {
        problemText = end == Wait::End::late ? "the host does not answer" : "";
        return false;
    }
    int error = 0;
    socklen_t length = sizeof error;
    ::getsockopt(socket.get(), SOL_SOCKET, SO_ERROR, &error, &length);
    return error == 0 || fail(error);
}

bool TcpStream::send(std::string_view bytes, const Wait& wait)
{
    const Wait::Clock::time_point deadline = deadlineIn(longestSending);
    while (!bytes.empty()) {
        const Wait::End end = wait.forDescriptor(socket.get(), POLLOUT, deadline);
        if (end != Wait::End::ready) {
            problemText = end == Wait::End::late ? "the host takes no request" : "";
            return false;
        }
        const ssize_t count = ::send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0 && errno != EAGAIN && errno != EINTR) {
            return fail(errno);
        }
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

std::span<const std::uint8_t> TcpStream::receive(double longestSilence, const Wait& wait)
{
    const Wait::Clock::time_point deadline = deadlineIn(longestSilence);
    while (true) {
        const Wait::End end = wait.forDescriptor(socket.get(), POLLIN, deadline);
        if (end != Wait::End::ready) {
            problemText = end == Wait::End::late
                              ? "nothing came for " + secondsText(longestSilence) + " s"
                              : "";
            return {};
        }
        const ssize_t count = ::recv(socket.get(), buffer.data(), buffer.size(), 0);
        if (count > 0) {
            return std::span(buffer).first(static_cast<std::size_t>(count));
        }
        if (count == 0) {
            atEnd = true;
            closedByPeer = true;
            problemText = "the other end closed it";
            return {};
        }
        if (errno != EAGAIN && errno != EINTR) {
            fail(errno);
            return {};
        }
    }
}
