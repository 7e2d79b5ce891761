#include "sources/Passwords.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <string_view>

namespace {

// Inputs may be opened by several threads.
struct Taken {
    std::mutex mutex;
    std::map<std::string, std::string> byName;
};

Taken& taken()
{
    static Taken all;
    return all;
}

void remember(const std::string& name, const std::string& password)
{
    const std::lock_guard lock(taken().mutex);
    taken().byName[name] = password;
}

// Where the text behind a scheme begins that can have a user, also where it is written wrong; 0 for
// what is no address.
std::size_t behindScheme(std::string_view name)
{
    for (const std::string_view scheme : {"ntrip", "ntrips", "tcp", "udp", "http", "https"}) {
        const std::string_view rest = name.substr(std::min(scheme.size(), name.size()));
        const bool isScheme =
            name.size() > scheme.size() &&
            std::equal(scheme.begin(), scheme.end(), name.begin(),
                       [](char a, char b) { return a == b || a == b + ('a' - 'A'); });
        if (isScheme && (rest[0] == ':' || rest.substr(0, 2) == "//")) {
            return name.size() - rest.size() + std::min(rest.find_first_not_of(":/"), rest.size());
        }
    }
    return 0;
}

// "host", "host:2101", "[::1]:2101"
bool isHostAndPort(std::string_view text)
{
    const std::size_t bracket = text.rfind(']');
    const std::size_t colon = text.find(':', bracket == std::string_view::npos ? 0 : bracket);
    return colon == std::string_view::npos ||
           text.find_first_not_of("0123456789", colon + 1) == std::string_view::npos;
}

// From the ":" of the password to the "@" behind it; nothing where there is none. A password may
// hold signs that ought to be written in another way.
std::string_view passwordIn(std::string_view name)
{
    const std::size_t begin = behindScheme(name);
    const std::string_view rest = name.substr(begin);
    const std::size_t at = rest.rfind('@');
    const std::size_t colon = rest.find(':');
    const bool hasUser = rest.substr(0, rest.find('?')).find('@') != std::string_view::npos ||
                         !isHostAndPort(rest.substr(0, rest.find_first_of("/?")));
    return begin > 0 && at != std::string_view::npos && colon < at && hasUser
               ? rest.substr(colon, at - colon)
               : std::string_view();
}

}    // namespace

void takePasswords(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::size_t length = std::strlen(argv[i]);
        const std::string_view found = passwordIn({argv[i], length});
        if (found.empty()) {
            continue;
        }
        const std::string password(found.substr(1));
        char* const place = argv[i] + (found.data() - argv[i]);
        const std::size_t behind =
            length - static_cast<std::size_t>(place - argv[i]) - found.size();
        std::memmove(place, place + found.size(), behind);
        std::memset(place + behind, 0, found.size());
        remember(argv[i], password);
    }
}

std::string takePassword(const std::string& name)
{
    const std::string_view found = passwordIn(name);
    if (found.empty()) {
        return name;
    }
    std::string rest = name;
    rest.erase(static_cast<std::size_t>(found.data() - name.data()), found.size());
    remember(rest, std::string(found.substr(1)));
    return rest;
}

std::optional<std::string> takenPassword(const std::string& name)
{
    const std::lock_guard lock(taken().mutex);
    const auto found = taken().byName.find(name);
    return found == taken().byName.end() ? std::nullopt : std::optional(found->second);
}
