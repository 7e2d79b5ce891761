// All connections to the server, and the port where more come from.
#pragma once

#include "commands/serve/Client.h"
#include "commands/serve/ListenAddress.h"

class QTcpServer;

// How much was served.
struct Served {
    std::uint64_t messages = 0;
    std::uint64_t clients = 0;    // that messages were for
    std::uint64_t bytes = 0;      // to all of them together
};

// Lives in one thread with an event loop.
class Clients {
public:
    static constexpr std::size_t most = 100;

    // The options must outlive it.
    Clients(const ClientOptions& clientOptions, Client::Tell tellLine);
    ~Clients();
    Clients(const Clients&) = delete;
    Clients& operator=(const Clients&) = delete;

    // Begins to wait for clients at this address, in which a free port is filled in. What is in the
    // way, for people; empty when nothing is.
    std::string listen(ListenAddress& address);

    void send(std::span<const std::uint8_t> packed, const Envelope& envelope);
    // Whether messages are for anybody.
    bool isAnybodyThere() const;
    // Whether all clients take what is sent at the pace at which it comes. Those that take nothing
    // at all are dropped.
    bool keepUp();
    // Nothing more comes, and nobody more is waited for.
    void end();
    bool isEmpty() const { return clients.empty(); }
    // Drops those who are still there. How much was served.
    Served takeLeave();

private:
    void welcome();
    void add(QTcpSocket* connection);
    void remove(Client* client);

    const ClientOptions& options;
    Client::Tell tell;
    std::unique_ptr<QTcpServer> server;
    std::vector<Client*> clients;
    bool isCrowded = false;    // and that was told
    Served served;
};
