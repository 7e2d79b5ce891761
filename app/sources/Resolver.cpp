#include "sources/Resolver.h"

#include "base/Interrupt.h"

#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

#include <netdb.h>

namespace {

std::string reasonOf(int error)
{
    switch (error) {
    case EAI_NONAME:
        return "there is no host of this name";
    case EAI_AGAIN:
        return "the host's name cannot be looked up: no name server answers";
    default:
        return std::string("the host's name cannot be looked up: ") + ::gai_strerror(error);
    }
}

Resolved lookUp(const std::string& host, unsigned port, int flags)
{
    addrinfo wanted = {};
    wanted.ai_flags = flags | AI_NUMERICSERV;
    wanted.ai_socktype = SOCK_STREAM;    // each address once
    addrinfo* found = nullptr;
    const int error = ::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &wanted, &found);
    if (error != 0) {
        return {{}, reasonOf(error)};
    }
    const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(found, ::freeaddrinfo);
    Resolved result;
    for (const addrinfo* each = found; each != nullptr; each = each->ai_next) {
        Address& address = result.addresses.emplace_back();
        std::memcpy(&address.bytes, each->ai_addr, each->ai_addrlen);
        address.length = each->ai_addrlen;
    }
    return result;
}

// Shared with a thread that nobody waits for, since nothing can end what it does.
struct LookUp {
    std::mutex mutex;
    std::condition_variable isDone;
    bool done = false;
    Resolved result;
};

void run(const std::shared_ptr<LookUp>& work, const std::string& host, unsigned port)
{
    interrupt::leaveToFirstThread();
    Resolved result = lookUp(host, port, AI_ADDRCONFIG);
    const std::lock_guard lock(work->mutex);
    work->result = std::move(result);
    work->done = true;
    work->isDone.notify_one();
}

}    // namespace

Resolved resolve(const std::string& host, unsigned port, const Wait& wait)
{
    if (Resolved numeric{numericAddresses(host, port), {}}; !numeric.addresses.empty()) {
        return numeric;
    }
    const auto work = std::make_shared<LookUp>();
    try {
        std::thread(run, work, host, port).detach();
    } catch (const std::system_error&) {
        return {{}, "the host's name cannot be looked up: there is no memory for it"};
    }
    std::unique_lock lock(work->mutex);
    while (!work->isDone.wait_for(lock, Wait::slice, [&] { return work->done; })) {
        if (!wait.goesOn()) {
            return {};
        }
    }
    return std::move(work->result);
}

std::vector<Address> numericAddresses(const std::string& host, unsigned port)
{
    return lookUp(host, port, AI_NUMERICHOST).addresses;
}

std::string hostText(const Address& address)
{
    char host[NI_MAXHOST] = {};
    const int error =
        ::getnameinfo(address.get(), address.length, host, sizeof host, nullptr, 0, NI_NUMERICHOST);
    const std::string text = error == 0 ? host : "?";
    constexpr const char* mapped = "::ffff:";    // of IPv4, on a socket of IPv6
    return text.compare(0, std::strlen(mapped), mapped) == 0 ? text.substr(std::strlen(mapped))
                                                             : text;
}

std::string addressText(const Address& address)
{
    char port[NI_MAXSERV] = {};
    ::getnameinfo(address.get(), address.length, nullptr, 0, port, sizeof port, NI_NUMERICSERV);
    const std::string host = hostText(address);
    return (host.find(':') != std::string::npos ? "[" + host + "]" : host) + ":" + port;
}
