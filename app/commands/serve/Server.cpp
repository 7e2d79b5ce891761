#include "commands/serve/Server.h"

#include "base/Interrupt.h"

#include <asio/ip/v6_only.hpp>
#include <asio/post.hpp>
#include <asio/system_error.hpp>
#include <asio/use_future.hpp>

#include <algorithm>
#include <cerrno>
#include <thread>

using asio::ip::tcp;

namespace {

constexpr std::size_t mostClients = 100;
constexpr std::size_t behindBytes = Client::roomBytes / 4;

tcp::endpoint endpointOf(const ListenAddress& address, asio::thread_pool& network)
{
    asio::error_code error;
    if (address.host.empty()) {
        tcp::socket(network).open(tcp::v6(), error);    // which the system may not have
        return {error ? tcp::v4() : tcp::v6(), address.port};
    }
    const asio::ip::address literal = asio::ip::make_address(address.host, error);
    if (!error) {
        return {literal, address.port};
    }
    return *tcp::resolver(network)
                .resolve(address.host, std::to_string(address.port),
                         tcp::resolver::address_configured | tcp::resolver::numeric_service)
                .begin();
}

std::string reasonOf(const std::error_code& error)
{
    if (error.category() == asio::error::get_netdb_category() ||
        error.category() == asio::error::get_addrinfo_category()) {
        return "no such host is known";
    }
    switch (error.value()) {
    case EADDRINUSE:
        return "the port is in use; take another one, or 0 for any that is free";
    case EACCES:
    case EPERM:
        return "that is not allowed; ports from 1024 on are for everybody";
    case EADDRNOTAVAIL:
        return "this machine has no such address";
    default:
        return error.message();
    }
}

}    // namespace

Server::~Server()
{
    network.stop();
    network.join();
}

template <typename Work>
auto Server::inThread(const Work& work)
{
    return asio::post(network, asio::use_future(work)).get();
}

std::string Server::listen(ListenAddress& address)
{
    try {
        inThread([&] { open(address); });
        return {};
    } catch (const std::system_error& error) {
        return "cannot serve on " + address.text() + ": " + reasonOf(error.code());
    }
}

// In the thread, as the first that it does. Every address is that of version 6, where clients of
// version 4 are taken as well.
void Server::open(ListenAddress& address)
{
    interrupt::leaveToFirstThread();
    const tcp::endpoint endpoint = endpointOf(address, network);
    acceptor.open(endpoint.protocol());
    if (endpoint.protocol() == tcp::v6()) {
        acceptor.set_option(asio::ip::v6_only(!address.host.empty()));
    }
    acceptor.set_option(tcp::acceptor::reuse_address(true));
    acceptor.bind(endpoint);
    acceptor.listen();
    address.port = acceptor.local_endpoint().port();
    accept();
}

void Server::accept()
{
    acceptor.async_accept(peer, [this](const asio::error_code& error, tcp::socket connection) {
        if (!acceptor.is_open()) {
            return;
        }
        if (error) {
            acceptLater();
            return;
        }
        welcome(std::move(connection));
        accept();
    });
}

// The system may have no descriptor left.
void Server::acceptLater()
{
    pause.expires_after(std::chrono::seconds(1));
    pause.async_wait([this](const asio::error_code&) {
        if (acceptor.is_open()) {
            accept();
        }
    });
}

void Server::welcome(tcp::socket connection)
{
    forgetGone();
    if (clients.size() < mostClients) {
        isCrowded = false;
        clients.push_back(std::make_shared<Client>(std::move(connection), peer, options, served));
        clients.back()->begin();
    } else if (!std::exchange(isCrowded, true)) {
        options.tell("more than " + std::to_string(mostClients) + " connections are refused");
    }
}

void Server::forgetGone()
{
    std::erase_if(clients, [](const auto& client) { return client->isGone(); });
}

bool Server::send(std::span<const std::uint8_t> packed, const Envelope& envelope)
{
    return inThread([&] {
        ++served.messages;
        for (const auto& client : clients) {
            if (client->receives()) {
                client->send(packed, envelope);
            }
        }
        forgetGone();
        return doKeepUp();
    });
}

bool Server::isAnybodyThere()
{
    return inThread([this] {
        return std::any_of(clients.begin(), clients.end(),
                           [](const auto& client) { return client->receives(); });
    });
}

bool Server::doKeepUp() const
{
    return std::all_of(clients.begin(), clients.end(),
                       [](const auto& client) { return client->waiting() < behindBytes; });
}

void Server::dropStuck()
{
    for (const auto& client : clients) {
        client->dropIfStuck();
    }
}

bool Server::keepUp()
{
    return inThread([this] {
        dropStuck();
        return doKeepUp();
    });
}

Served Server::end()
{
    inThread([this] {
        acceptor.close();
        for (const auto& client : clients) {
            client->end();
        }
    });
    const auto isOver = [this] {
        dropStuck();
        forgetGone();
        return clients.empty();
    };
    while (!inThread(isOver) && !interrupt::requested()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return inThread([this] {
        for (const auto& client : clients) {
            client->leave("dropped: the server ends");
        }
        return served;
    });
}
