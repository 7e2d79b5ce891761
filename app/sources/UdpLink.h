// Datagrams: udp://:port, udp://group:port
#pragma once

#include "base/OwnedDescriptor.h"
#include "sources/InputUrl.h"
#include "sources/Link.h"
#include "sources/Resolver.h"

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
    static constexpr std::size_t largestDatagram = 1 << 16;

    bool fail();
    bool bindTo(Address address);
    bool bindToDevice(const std::string& interface);
    bool join(const Address& group, unsigned interface);
    bool isWanted(const Address& sender) const;
    ssize_t receiveOne(Address& sender);
    void noteSender(const Address& sender, const Tell& tell);
    void noteLost(const Tell& tell);

    InputUrl url;
    std::string from;    // the only sender that is wanted; empty for all
    OwnedDescriptor socket;
    std::set<std::string> senders;
    std::uint32_t lost = 0;    // datagrams for which there was no room, as the system counts
    std::uint32_t lostTold = 0;
    std::vector<std::uint8_t> buffer;
};
