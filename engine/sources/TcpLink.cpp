#include "sources/TcpLink.h"

double longestSilence(const InputUrl& url)
{
    constexpr double usual = 60;
    return url.number("timeout", usual);
}

bool TcpLink::open(const Wait& wait, const Tell& /*tell*/)
{
    const bool isOpen = stream.connect(url.host, url.port, wait);
    problemText = stream.problem();
    return isOpen;
}

std::span<const std::uint8_t> TcpLink::receive(const Wait& wait, const Tell& /*tell*/)
{
    const std::span<const std::uint8_t> bytes = stream.receive(longestSilence(url), wait);
    problemText = stream.problem();
    atEnd = stream.isAtEnd();
    return bytes;
}
