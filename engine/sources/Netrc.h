// Users and passwords by host, as many programs read them from ~/.netrc.
#pragma once

#include <optional>
#include <string>

struct NetrcEntry {
    std::string login;
    std::string password;
};

// The first entry of the file for this host, or for all ("default"), that has a password and, where
// a login is given, that login. Nothing where there is none or the file cannot be read.
std::optional<NetrcEntry> netrcEntry(const std::string& fileName, const std::string& host,
                                     const std::string& login);
