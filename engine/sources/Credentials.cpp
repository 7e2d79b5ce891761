#include "sources/Credentials.h"

#include "sources/Netrc.h"
#include "sources/Passwords.h"

#include <cstdlib>

#include <sys/stat.h>

namespace {

std::string environment(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value == nullptr ? "" : value;
}

std::string netrcName()
{
    const std::string named = environment("NETRC");
    return named.empty() ? environment("HOME") + "/.netrc" : named;
}

bool isReadByOthers(const std::string& name)
{
    struct stat status = {};
    return ::stat(name.c_str(), &status) == 0 && (status.st_mode & (S_IRGRP | S_IROTH)) != 0;
}

}    // namespace

Credentials credentialsFor(const InputUrl& url, const std::string& name)
{
    Credentials result;
    result.user = url.user.empty() ? environment("RTCM2_NTRIP_USER") : url.user;
    if (const auto given = takenPassword(name)) {
        result.password = percentDecoded(*given);
        return result;
    }
    result.password = environment("RTCM2_NTRIP_PASSWORD");
    if (!result.password.empty()) {
        return result;
    }
    const std::string file = netrcName();
    if (const auto entry = netrcEntry(file, url.host, result.user)) {
        result.user = entry->login;
        result.password = entry->password;
        if (isReadByOthers(file)) {
            result.warning =
                "others can read the passwords in " + file + "; chmod 600 " + file + " keeps them";
        }
    }
    return result;
}
