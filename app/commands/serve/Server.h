// The server as the one who plays sees it. It works in a thread of its own, so that nobody waits
// for the other: clients are answered while an input is waited for.
#pragma once

#include "commands/serve/Client.h"
#include "commands/serve/ListenAddress.h"

#include <asio/thread_pool.hpp>

#include <vector>

class Server {
public:
    // The options must outlive the server. Their `tell` is called in its thread.
    explicit Server(const ClientOptions& clientOptions) : options(clientOptions) {}
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // Begins to wait for clients at this address, in which a free port is filled in. What is in the
    // way, for people; empty when nothing is.
    std::string listen(ListenAddress& address);

    // Whether messages are for anybody.
    bool isAnybodyThere();
    // To all clients that receive. Whether they take what is sent at the pace at which it comes.
    bool send(std::span<const std::uint8_t> packed, const Envelope& envelope);
    // Whether they do so by now. Clients that take nothing at all are dropped.
    bool keepUp();
    // Nothing more comes. Ends the clients when they have taken everything, or at once if the
    // program is asked to end.
    Served end();

private:
    // Has the thread do something and waits for that.
    template <typename Work>
    auto inThread(const Work& work);

    void open(ListenAddress& address);
    void accept();
    void acceptLater();
    void welcome(asio::ip::tcp::socket connection);
    void forgetGone();
    bool doKeepUp() const;
    void dropStuck();

    const ClientOptions& options;
    asio::thread_pool network{1};    // a single thread, in which everything that follows is used
    asio::ip::tcp::acceptor acceptor{network};
    asio::ip::tcp::endpoint peer;         // of the next connection
    asio::steady_timer pause{network};    // where no connection could be accepted
    std::vector<std::shared_ptr<Client>> clients;
    bool isCrowded = false;    // and that was told
    Served served;
};
