// Where clients are waited for.
#pragma once

#include <cstdint>
#include <string>

struct ListenAddress {
    std::string host;          // empty for every address of this machine
    std::uint16_t port = 0;    // 0 for any that is free

    // As people write it: "0.0.0.0:2101", "[::1]:2101"
    std::string text() const;
};

// ":2101", "2101", "localhost:2101" or "[::1]:2101". Throws UsageError.
ListenAddress listenAddress(const std::string& text);
