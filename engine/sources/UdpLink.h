// Datagrams: udp://:port, udp://group:port
#pragma once

#include "sources/InputUrl.h"
#include "sources/Link.h"

#include <asio/io_context.hpp>
#include <asio/ip/udp.hpp>

#include <optional>
#include <set>
#include <vector>

// In the order of their arrival, from whoever sends them.
class UdpLink : public Link {
public:
    // Throws UrlError where the sender is none.
    explicit UdpLink(const InputUrl& inputUrl);

    bool open(const Wait& wait, const Tell& tell) override;
    std::span<const std::uint8_t> receive(const Wait& wait, const Tell& tell) override;

private:
    using Address = asio::ip::address;
    using Endpoint = asio::ip::udp::endpoint;
    static constexpr std::size_t largestDatagram = 1 << 16;

    bool isWell(const asio::error_code& error);
    bool bindTo(Address address);
    void noteSender(const Endpoint& sender, const Tell& tell);
    void noteLost(const Tell& tell);

    InputUrl url;
    std::optional<Address> from;    // the only sender that is wanted
    asio::io_context context;
    asio::ip::udp::socket socket{context};
    std::set<Endpoint> senders;
    std::uint32_t lostTold = 0;    // datagrams for which there was no room
    std::vector<std::uint8_t> buffer;
};
