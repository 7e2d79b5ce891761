// The server as the one who plays sees it. It works in a thread of its own, so that nobody waits
// for the other: clients are answered while an input is waited for.
#pragma once

#include "commands/serve/Clients.h"

#include <QCoreApplication>
#include <QThread>

// Calls into the thread.
class ServerCall : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void made();
};

class Server {
public:
    // The options must outlive the server. `tellLine` is called in its thread.
    Server(const ClientOptions& clientOptions, Client::Tell tellLine);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // As those of Clients.
    std::string listen(ListenAddress& address);
    void send(std::span<const std::uint8_t> packed, const Envelope& envelope);
    bool isAnybodyThere();
    bool keepUp();
    // Ends the clients when they have taken everything, or at once if the program is asked to end.
    Served end();

private:
    void makeApplication();
    // Has the thread do something and waits for that.
    void inThread(const std::function<void()>& work);

    std::optional<QCoreApplication> application;    // without one, no thread waits for events
    QThread thread;
    QObject place;    // lives in the thread
    ServerCall call;
    const std::function<void()>* wanted = nullptr;    // of a call
    std::unique_ptr<Clients> clients;
};
