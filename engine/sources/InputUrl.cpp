#include "sources/InputUrl.h"

#include "base/NearestName.h"
#include "base/PlainText.h"
#include "sources/UrlSchemes.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

namespace {

// What stands before the ":"; empty where that can be no scheme.
std::string schemeName(std::string_view name)
{
    const std::string scheme = inSmallLetters(name.substr(0, name.find(':')));
    const bool isName =
        scheme.size() < name.size() &&
        scheme.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789+-.") == std::string::npos;
    return isName ? scheme : std::string();
}

// Takes what stands before the first of the signs off the text.
std::string_view takeUpTo(std::string_view& text, std::string_view signs)
{
    const std::string_view part = text.substr(0, text.find_first_of(signs));
    text.remove_prefix(part.size());
    return part;
}

class Reading {
public:
    Reading(const std::string& name, const UrlScheme& is) : scheme(is)
    {
        url.scheme = scheme.name;
        rest = std::string_view(name).substr(url.scheme.size() + 1);
    }

    InputUrl read()
    {
        requirePrintable();
        if (url.scheme == "serial") {
            url.path = takeUpTo(rest, "?");
            require(!url.path.empty(), "no device is named");
        } else {
            readAuthority();
            readPath();
        }
        readParameters();
        return url;
    }

private:
    // The whole text is not repeated: a password may stand in it.
    void require(bool holds, const std::string& mistake) const
    {
        if (!holds) {
            throw UrlError{"input " + url.scheme + ":...: " + mistake + "; expected " +
                           scheme.form};
        }
    }

    void requirePrintable() const
    {
        require(std::all_of(rest.begin(), rest.end(), [](char c) { return c > ' ' && c < 0x7F; }),
                "there is a blank or a character that cannot stand in an address (%20 is a blank)");
    }

    void readAuthority()
    {
        require(rest.substr(0, 2) == "//", R"("//" is missing behind ":")");
        rest.remove_prefix(2);
        std::string_view authority = takeUpTo(rest, "/?");
        const std::size_t at = authority.rfind('@');
        if (at != std::string_view::npos) {
            require(url.scheme == "ntrip", "a user is for ntrip");
            url.user = percentDecoded(authority.substr(0, at));
            require(url.user.find_first_of(":\r\n") == std::string::npos,
                    "there is a sign in the name of the user that cannot stand there");
            authority.remove_prefix(at + 1);
        }
        readHost(authority);
        readPort(authority);
    }

    void readHost(std::string_view& authority)
    {
        if (authority.substr(0, 1) == "[") {
            authority.remove_prefix(1);
            url.host = takeUpTo(authority, "]");
            require(!authority.empty(), "\"]\" is missing");
            authority.remove_prefix(1);
        } else {
            url.host = takeUpTo(authority, ":");
        }
        require(!url.host.empty() || !scheme.needsHost, "no host is named");
    }

    void readPort(std::string_view text)
    {
        url.port = scheme.usualPort;
        if (!text.empty()) {
            const auto port = numberIn<unsigned>(text.substr(1));
            require(text[0] == ':' && port && *port > 0 && *port <= 65535,
                    "the port is no number from 1 to 65535 (a \":\" or \"/\" in a password has to "
                    "be written %3A or %2F, an address of IPv6 in [])");
            url.port = *port;
        }
        require(url.port != 0 || !scheme.needsPort, "no port is named");
    }

    void readPath()
    {
        const std::string_view path = takeUpTo(rest, "?");
        url.path = path.substr(std::min<std::size_t>(path.size(), 1));
        require(url.path.empty() || scheme.hasPath, "there is something behind the port");
    }

    void readParameters()
    {
        while (!rest.empty()) {
            rest.remove_prefix(1);    // "?" or "&"
            std::string_view pair = takeUpTo(rest, "&");
            const std::string name(takeUpTo(pair, "="));
            url.parameters[name] =
                percentDecoded(pair.substr(std::min<std::size_t>(pair.size(), 1)));
            requireParameter(name);
        }
    }

    void requireParameter(const std::string& name) const
    {
        std::vector<std::string> names;
        for (const UrlParameter& parameter : scheme.parameters) {
            if (parameter.name == name) {
                requireValue(parameter);
                return;
            }
            names.emplace_back(parameter.name);
        }
        std::string all;
        for (const std::string& each : names) {
            all += (all.empty() ? "" : ", ") + each;
        }
        const std::string meant = suggestion(nearestNames(name, names));
        throw UrlError{"input " + url.scheme + ":...: there is no parameter '" + name +
                       "' but: " + all + (meant.empty() ? "" : "; " + meant)};
    }

    void requireValue(const UrlParameter& parameter) const
    {
        const std::string& value = url.parameters.at(parameter.name);
        const auto number = numberIn<double>(value);
        const bool isText = parameter.most == 0;
        url.require(parameter.name,
                    isText ? !value.empty()
                           : number && std::isfinite(*number) && *number >= parameter.least &&
                                 *number <= parameter.most,
                    parameter.expected);
    }

    const UrlScheme& scheme;
    std::string_view rest;
    InputUrl url;
};

[[noreturn]] void refuseScheme(const std::string& name)
{
    std::vector<std::string> names;
    std::string forms;
    for (const UrlScheme& scheme : urlSchemes()) {
        names.emplace_back(scheme.name);
        forms += std::string(forms.empty() ? "" : ", ") + scheme.form;
    }
    const std::string meant = suggestion(nearestNames(name, names));
    throw UrlError{"there are no inputs " + name + "://..., but files and " + forms +
                   (meant.empty() ? "" : "; " + meant)};
}

}    // namespace

double InputUrl::number(const std::string& parameter, double otherwise) const
{
    const auto found = parameters.find(parameter);
    return found == parameters.end() ? otherwise : *numberIn<double>(found->second);
}

std::string InputUrl::text(const std::string& parameter, const std::string& otherwise) const
{
    const auto found = parameters.find(parameter);
    return found == parameters.end() ? otherwise : found->second;
}

void InputUrl::require(const std::string& parameter, bool isGood, const std::string& expected) const
{
    if (!isGood) {
        throw UrlError{"input " + scheme + ":...: " + parameter + "=" + text(parameter) +
                       " is wrong; expected " + expected};
    }
}

std::string InputUrl::authority() const
{
    const bool isNumeric = host.find(':') != std::string::npos;
    return (isNumeric ? "[" + host + "]" : host) + (port == 0 ? "" : ":" + std::to_string(port));
}

std::string InputUrl::shown() const
{
    return scheme == "serial" ? scheme + ":" + path
                              : scheme + "://" + authority() + (path.empty() ? "" : "/" + path);
}

std::string percentDecoded(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned code = 0;
        const char* const digits = text.data() + i + 1;
        const bool isCoded = text[i] == '%' && i + 2 < text.size() &&
                             std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2;
        result += isCoded ? static_cast<char>(code) : text[i];
        i += isCoded ? 2 : 0;
    }
    return result;
}

bool isUrl(std::string_view name)
{
    const std::string scheme = schemeName(name);
    return urlScheme(scheme) != nullptr ||
           (!scheme.empty() && name.substr(scheme.size(), 3) == "://");
}

InputUrl inputUrl(const std::string& name)
{
    const std::string scheme = schemeName(name);
    const UrlScheme* const known = urlScheme(scheme);
    if (known == nullptr) {
        refuseScheme(scheme);
    }
    return Reading(name, *known).read();
}
