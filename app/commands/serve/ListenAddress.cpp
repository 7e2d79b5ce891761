#include "commands/serve/ListenAddress.h"

#include "base/PlainText.h"
#include "commands/Command.h"

namespace {

[[noreturn]] void refuseAddress(const std::string& text)
{
    throw UsageError{"'" + text +
                     "' is no address to serve at: it has to be :PORT or HOST:PORT, such as :2101, "
                     "127.0.0.1:2101 or [::1]:2101, with a port up to 65535, or 0 for any that is "
                     "free"};
}

std::string hostIn(const std::string& text, const std::string& host)
{
    const bool isBracketed = host.size() > 2 && host.front() == '[' && host.back() == ']';
    if (!isBracketed && host.find_first_of("[]:/ ") != std::string::npos) {
        refuseAddress(text);
    }
    return isBracketed ? host.substr(1, host.size() - 2) : host;
}

}    // namespace

std::string ListenAddress::text() const
{
    const bool isBracketed = host.find(':') != std::string::npos;
    return (host.empty()  ? "0.0.0.0"
            : isBracketed ? "[" + host + "]"
                          : host) +
           ":" + std::to_string(port);
}

ListenAddress listenAddress(const std::string& text)
{
    const std::size_t colon = text.rfind(':');
    const std::string port = colon == std::string::npos ? text : text.substr(colon + 1);
    const std::optional<std::uint16_t> number = numberIn<std::uint16_t>(port);
    if (!number) {
        refuseAddress(text);
    }
    return {colon == std::string::npos ? "" : hostIn(text, text.substr(0, colon)), *number};
}
