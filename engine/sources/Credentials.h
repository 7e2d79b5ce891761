// Who asks a caster, and the password that proves it.
#pragma once

#include "sources/InputUrl.h"

#include <string>

struct Credentials {
    std::string user;
    std::string password;
    std::string warning;    // for people, about the place of the password; empty when all is well

    bool isEmpty() const { return user.empty() && password.empty(); }
};

// The user that the URL names, or that of RTCM2_NTRIP_USER; the password that was given with the
// name of the input, or that of RTCM2_NTRIP_PASSWORD; or else what ~/.netrc, or the file that NETRC
// names, has for the host and this user.
Credentials credentialsFor(const InputUrl& url, const std::string& name);
