// The addresses that a host's name stands for.
#pragma once

#include "sources/Wait.h"

#include <asio/ip/address.hpp>

#include <string>
#include <vector>

struct Resolved {
    std::vector<asio::ip::address> addresses;
    std::string problem;    // why there are none; empty when the program is asked to end
};

// Of names and of addresses that are written as numbers.
Resolved resolve(const std::string& host, const Wait& wait);
