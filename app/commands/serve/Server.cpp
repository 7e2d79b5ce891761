#include "commands/serve/Server.h"

#include "base/Interrupt.h"

#include <cstdlib>
#include <thread>

Server::Server(const ClientOptions& clientOptions, Client::Tell tellLine)
{
    makeApplication();
    QObject::connect(
        &call, &ServerCall::made, &place, [this] { (*wanted)(); }, Qt::BlockingQueuedConnection);
    place.moveToThread(&thread);
    thread.start();
    inThread([&] {
        interrupt::leaveToFirstThread();
        clients = std::make_unique<Clients>(clientOptions, std::move(tellLine));
    });
}

// It would take over the user's locale, in which numbers may look different.
void Server::makeApplication()
{
    static int count = 1;
    static char name[] = "rtcm2";
    static char* arguments[] = {name, nullptr};
    ::setenv("LC_ALL", "C.UTF-8", 1);
    if (QCoreApplication::instance() == nullptr) {
        application.emplace(count, arguments);
    }
}

Server::~Server()
{
    inThread([this] { clients.reset(); });
    thread.quit();
    thread.wait();
}

void Server::inThread(const std::function<void()>& work)
{
    wanted = &work;
    Q_EMIT call.made();
}

std::string Server::listen(ListenAddress& address)
{
    std::string problem;
    inThread([&] { problem = clients->listen(address); });
    return problem;
}

void Server::send(std::span<const std::uint8_t> packed, const Envelope& envelope)
{
    inThread([&] { clients->send(packed, envelope); });
}

bool Server::isAnybodyThere()
{
    bool isThere = false;
    inThread([&] { isThere = clients->isAnybodyThere(); });
    return isThere;
}

bool Server::keepUp()
{
    bool doKeepUp = false;
    inThread([&] { doKeepUp = clients->keepUp(); });
    return doKeepUp;
}

Served Server::end()
{
    bool isEmpty = false;
    inThread([&] { clients->end(); });
    while (!isEmpty && !interrupt::requested()) {
        inThread([&] {
            clients->keepUp();
            isEmpty = clients->isEmpty();
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(isEmpty ? 0 : 5));
    }
    Served served;
    inThread([&] { served = clients->takeLeave(); });
    return served;
}
