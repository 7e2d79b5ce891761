#include "sources/Resolver.h"

#include "base/Interrupt.h"

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>

#include <future>
#include <system_error>
#include <thread>

namespace {

std::string reasonOf(const asio::error_code& error)
{
    if (error == asio::error::host_not_found) {
        return "there is no host of this name";
    }
    return "the host's name cannot be looked up: " + (error == asio::error::host_not_found_try_again
                                                          ? "no name server answers"
                                                          : error.message());
}

Resolved lookUp(const std::string& host)
{
    asio::io_context context;
    asio::ip::tcp::resolver resolver(context);
    asio::error_code error;
    const auto found = resolver.resolve(host, "", resolver.address_configured, error);
    Resolved result;
    for (const auto& each : found) {
        result.addresses.push_back(each.endpoint().address());
    }
    result.problem = error ? reasonOf(error) : "";
    return result;
}

}    // namespace

// In a thread that nobody waits for, since nothing can end what it does; Asio's own, which looks
// names up in the background, would be waited for.
Resolved resolve(const std::string& host, const Wait& wait)
{
    asio::error_code isName;
    if (const auto address = asio::ip::make_address(host, isName); !isName) {
        return {{address}, ""};
    }
    std::promise<Resolved> promise;
    std::future<Resolved> result = promise.get_future();
    const auto run = [host](std::promise<Resolved> there) {
        interrupt::leaveToFirstThread();
        there.set_value(lookUp(host));
    };
    try {
        std::thread(run, std::move(promise)).detach();
    } catch (const std::system_error&) {
        return {{}, "the host's name cannot be looked up: there is no memory for it"};
    }
    const auto isThere = [&] { return result.wait_for(Wait::slice) == std::future_status::ready; };
    return wait.until(isThere) == Wait::End::done ? result.get() : Resolved();
}
