// The addresses that a host's name stands for.
#pragma once

#include "sources/Wait.h"

#include <string>
#include <vector>

#include <sys/socket.h>

struct Address {
    sockaddr_storage bytes = {};
    socklen_t length = 0;

    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&bytes); }
    int family() const { return bytes.ss_family; }
};

struct Resolved {
    std::vector<Address> addresses;
    std::string problem;    // why there are none; empty when the program is asked to end
};

// Of names and of addresses that are written as numbers.
Resolved resolve(const std::string& host, unsigned port, const Wait& wait);

// Of addresses that are written as numbers only; none for others.
std::vector<Address> numericAddresses(const std::string& host, unsigned port);

// "192.0.2.1:2101", "[2001:db8::1]:2101"
std::string addressText(const Address& address);
// Without the port.
std::string hostText(const Address& address);
