#include "sources/UdpLink.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>

namespace {

constexpr std::size_t sendersTold = 8;

bool set(int socket, int level, int option, int value)
{
    return ::setsockopt(socket, level, option, &value, sizeof value) == 0;
}

bool isGroup(const Address& address)
{
    if (address.family() == AF_INET6) {
        const auto& six = reinterpret_cast<const sockaddr_in6&>(address.bytes);
        return IN6_IS_ADDR_MULTICAST(&six.sin6_addr);
    }
    const auto& four = reinterpret_cast<const sockaddr_in&>(address.bytes);
    return IN_MULTICAST(ntohl(four.sin_addr.s_addr));
}

}    // namespace

UdpLink::UdpLink(const InputUrl& inputUrl) : url(inputUrl), buffer(largestDatagram)
{
    const std::string wanted = url.text("from");
    if (!wanted.empty()) {
        const std::vector<Address> addresses = numericAddresses(wanted, url.port);
        if (addresses.empty()) {
            throw UrlError{"input udp:...: from=" + wanted +
                           " is wrong; expected an address in numbers"};
        }
        from = hostText(addresses.front());
    }
}

bool UdpLink::fail()
{
    problemText = errno == EADDRINUSE ? "another program receives on this port"
                  : errno == EADDRNOTAVAIL
                      ? "this address is neither one of this computer nor that of a group"
                  : errno == ENODEV || errno == EINVAL
                      ? "it is not known on which interface; ?interface=NAME says it"
                      : std::strerror(errno);
    return false;
}

bool UdpLink::open(const Wait& wait, const Tell& /*tell*/)
{
    if (!url.host.empty()) {
        const Resolved resolved = resolve(url.host, url.port, wait);
        problemText = resolved.problem;
        return !resolved.addresses.empty() && bindTo(resolved.addresses.front());
    }
    // The first takes what comes by IPv4, too; some systems have no IPv6.
    return bindTo(numericAddresses("::", url.port).front()) ||
           bindTo(numericAddresses("0.0.0.0", url.port).front());
}

// Several programs may listen to a group. An address has one listener: with another one, each would
// get a part of the datagrams.
bool UdpLink::bindTo(Address address)
{
    const std::string interface = url.text("interface");
    const unsigned index = interface.empty() ? 0 : ::if_nametoindex(interface.c_str());
    if (!interface.empty() && index == 0) {
        problemText = "there is no interface '" + interface + "'";
        return false;
    }
    socket =
        OwnedDescriptor(::socket(address.family(), SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!socket.isOpen()) {
        return fail();
    }
    const bool group = isGroup(address);
    constexpr int wantedBytes = 4 << 20;    // the system gives less where that is too much
    set(socket.get(), SOL_SOCKET, SO_RCVBUF, wantedBytes);
    set(socket.get(), SOL_SOCKET, SO_RXQ_OVFL, 1);
    if (group) {
        set(socket.get(), SOL_SOCKET, SO_REUSEADDR, 1);
    } else if (!bindToDevice(interface)) {
        return fail();
    }
    if (address.family() == AF_INET6) {
        auto& six = reinterpret_cast<sockaddr_in6&>(address.bytes);
        six.sin6_scope_id = index != 0 ? index : six.sin6_scope_id;
        set(socket.get(), IPPROTO_IPV6, IPV6_V6ONLY, 0);
    }
    if (::bind(socket.get(), address.get(), address.length) != 0 ||
        (group && !join(address, index))) {
        return fail();
    }
    problemText.clear();
    return true;
}

bool UdpLink::bindToDevice(const std::string& interface)
{
    return interface.empty() ||
           ::setsockopt(socket.get(), SOL_SOCKET, SO_BINDTODEVICE, interface.c_str(),
                        static_cast<socklen_t>(interface.size())) == 0;
}

bool UdpLink::join(const Address& group, unsigned interface)
{
    group_req request = {};
    request.gr_group = group.bytes;
    request.gr_interface = interface;
    const int level = group.family() == AF_INET6 ? static_cast<int>(IPPROTO_IPV6) : IPPROTO_IP;
    return ::setsockopt(socket.get(), level, MCAST_JOIN_GROUP, &request, sizeof request) == 0;
}

std::span<const std::uint8_t> UdpLink::receive(const Wait& wait, const Tell& tell)
{
    problemText.clear();
    while (wait.forDescriptor(socket.get(), POLLIN, Wait::Clock::time_point::max()) ==
           Wait::End::ready) {
        Address sender;
        const ssize_t count = receiveOne(sender);
        if (count < 0 && errno != EAGAIN && errno != EINTR) {
            fail();
            return {};
        }
        if (count > 0 && isWanted(sender)) {
            noteSender(sender, tell);
            noteLost(tell);
            return std::span(buffer).first(static_cast<std::size_t>(count));
        }
    }
    return {};
}

ssize_t UdpLink::receiveOne(Address& sender)
{
    iovec place = {.iov_base = buffer.data(), .iov_len = buffer.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof lost)> control{};
    msghdr message = {};
    message.msg_name = &sender.bytes;
    message.msg_namelen = sizeof sender.bytes;
    message.msg_iov = &place;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t count = ::recvmsg(socket.get(), &message, 0);
    sender.length = message.msg_namelen;
    const cmsghdr* const told = count < 0 ? nullptr : CMSG_FIRSTHDR(&message);
    if (told != nullptr && told->cmsg_level == SOL_SOCKET && told->cmsg_type == SO_RXQ_OVFL) {
        std::memcpy(&lost, CMSG_DATA(told), sizeof lost);
    }
    return count;
}

bool UdpLink::isWanted(const Address& sender) const
{
    return from.empty() || from == hostText(sender);
}

// Messages of two senders may be mixed up, and none can be told by its content.
void UdpLink::noteSender(const Address& sender, const Tell& tell)
{
    if (senders.size() < sendersTold && senders.insert(addressText(sender)).second &&
        senders.size() > 1) {
        tell("datagrams on port " + std::to_string(url.port) + " come from a further sender, " +
             addressText(sender) + "; all are taken, and ?from=ADDRESS takes those of one only");
    }
}

// At the first, and whenever there are twice as many.
void UdpLink::noteLost(const Tell& tell)
{
    if (lost > 2 * lostTold) {
        tell(std::to_string(lost) + " datagrams on port " + std::to_string(url.port) +
             " are lost: they came faster than they were read");
        lostTold = lost;
    }
}
