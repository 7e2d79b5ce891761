// What comes by TCP as it is: tcp://host:port
#pragma once

#include "sources/InputUrl.h"
#include "sources/Link.h"
#include "sources/TcpStream.h"

class TcpLink : public Link {
public:
    explicit TcpLink(const InputUrl& inputUrl) : url(inputUrl) {}

    bool open(const Wait& wait, const Tell& tell) override;
    std::span<const std::uint8_t> receive(const Wait& wait, const Tell& tell) override;

private:
    InputUrl url;
    TcpStream stream;
};

// Seconds without a byte after which a connection is taken for dead.
double longestSilence(const InputUrl& url);
