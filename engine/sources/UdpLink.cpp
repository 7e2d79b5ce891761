#include "sources/UdpLink.h"

#include "sources/Operation.h"
#include "sources/Resolver.h"

#include <asio/buffer.hpp>
#include <asio/ip/v6_only.hpp>

#include <array>
#include <cerrno>
#include <cstring>
#include <sstream>

#include <linux/sock_diag.h>
#include <net/if.h>

namespace {

constexpr std::size_t sendersTold = 8;

// One that Asio has no name for.
asio::error_code setOption(asio::ip::udp::socket& socket, int level, int option, const void* value,
                           std::size_t size)
{
    const bool isSet = ::setsockopt(socket.native_handle(), level, option, value,
                                    static_cast<socklen_t>(size)) == 0;
    return {isSet ? 0 : errno, asio::system_category()};
}

// On this interface; 0 stands for the one that the system chooses.
asio::error_code join(asio::ip::udp::socket& socket, const asio::ip::udp::endpoint& group,
                      unsigned interface)
{
    group_req request = {};
    std::memcpy(&request.gr_group, group.data(), group.size());
    request.gr_interface = interface;
    return setOption(socket, group.address().is_v6() ? IPPROTO_IPV6 : IPPROTO_IP, MCAST_JOIN_GROUP,
                     &request, sizeof request);
}

// Of IPv4 also where it came to a socket of IPv6.
asio::ip::address plain(const asio::ip::address& address)
{
    return address.is_v6() && address.to_v6().is_v4_mapped()
               ? asio::ip::make_address_v4(asio::ip::v4_mapped, address.to_v6())
               : address;
}

std::string problemOf(const asio::error_code& error)
{
    switch (error.value()) {
    case 0:
    case ECANCELED:
        return "";
    case EADDRINUSE:
        return "another program receives on this port";
    case EADDRNOTAVAIL:
        return "this address is neither one of this computer nor that of a group";
    case ENODEV:
    case EINVAL:
        return "it is not known on which interface; ?interface=NAME says it";
    default:
        return error.message();
    }
}

}    // namespace

UdpLink::UdpLink(const InputUrl& inputUrl) : url(inputUrl), buffer(largestDatagram)
{
    if (const std::string wanted = url.text("from"); !wanted.empty()) {
        asio::error_code error;
        from = plain(asio::ip::make_address(wanted, error));
        url.require("from", !error, "an address in numbers");
    }
}

bool UdpLink::isWell(const asio::error_code& error)
{
    problemText = problemOf(error);
    return !error;
}

bool UdpLink::open(const Wait& wait, const Tell& /*tell*/)
{
    if (!url.host.empty()) {
        const Resolved resolved = resolve(url.host, wait);
        problemText = resolved.problem;
        return !resolved.addresses.empty() && bindTo(resolved.addresses.front());
    }
    // The first takes what comes by IPv4, too; some systems have no IPv6.
    return bindTo(asio::ip::address_v6::any()) || bindTo(asio::ip::address_v4::any());
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
    if (address.is_v6() && index != 0) {
        address = asio::ip::address_v6(address.to_v6().to_bytes(), index);
    }
    const Endpoint endpoint(address, static_cast<asio::ip::port_type>(url.port));
    asio::error_code error;
    socket.close(error);
    socket.open(endpoint.protocol(), error);
    constexpr int wantedBytes = 4 << 20;    // the system gives less where that is too much
    asio::error_code ignored;
    socket.set_option(asio::socket_base::receive_buffer_size(wantedBytes), ignored);
    socket.set_option(asio::ip::v6_only(false), ignored);
    socket.set_option(asio::socket_base::reuse_address(address.is_multicast()), ignored);
    if (!error && !address.is_multicast() && !interface.empty()) {
        error = setOption(socket, SOL_SOCKET, SO_BINDTODEVICE, interface.data(), interface.size());
    }
    if (!error) {
        socket.bind(endpoint, error);
    }
    return isWell(!error && address.is_multicast() ? join(socket, endpoint, index) : error);
}

std::span<const std::uint8_t> UdpLink::receive(const Wait& wait, const Tell& tell)
{
    while (true) {
        Endpoint sender;
        const auto begin = [&](auto done) {
            socket.async_receive_from(asio::buffer(buffer), sender, done);
        };
        const IoResult result = finish(context, socket, wait, 0, begin);
        if (!isWell(result.error)) {
            return {};
        }
        sender.address(plain(sender.address()));
        if (result.bytes > 0 && (!from || *from == sender.address())) {
            noteSender(sender, tell);
            noteLost(tell);
            return std::span(buffer).first(result.bytes);
        }
    }
}

// Messages of two senders may be mixed up, and none can be told by its content.
void UdpLink::noteSender(const Endpoint& sender, const Tell& tell)
{
    if (senders.size() < sendersTold && senders.insert(sender).second && senders.size() > 1) {
        std::ostringstream name;
        name << sender;
        tell("datagrams on port " + std::to_string(url.port) + " come from a further sender, " +
             name.str() + "; all are taken, and ?from=ADDRESS takes those of one only");
    }
}

// At the first, and whenever there are twice as many.
void UdpLink::noteLost(const Tell& tell)
{
    std::array<std::uint32_t, SK_MEMINFO_VARS> counts{};
    socklen_t size = sizeof counts;
    ::getsockopt(socket.native_handle(), SOL_SOCKET, SO_MEMINFO, counts.data(), &size);
    const std::uint32_t lost = counts[SK_MEMINFO_DROPS];
    if (lost > 2 * lostTold) {
        tell(std::to_string(lost) + " datagrams on port " + std::to_string(url.port) +
             " are lost: they came faster than they were read");
        lostTold = lost;
    }
}
