#include "commands/serve/Clients.h"

#include <QHostInfo>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>

namespace {

constexpr qint64 behindBytes = Client::roomBytes / 4;

QHostAddress hostAddressOf(const std::string& host)
{
    if (host.empty()) {
        return QHostAddress(QHostAddress::Any);
    }
    const QHostAddress literal(QString::fromStdString(host));
    if (!literal.isNull()) {
        return literal;
    }
    const QList<QHostAddress> known = QHostInfo::fromName(QString::fromStdString(host)).addresses();
    return known.isEmpty() ? QHostAddress() : known.first();
}

std::string reasonOf(const QTcpServer& server)
{
    switch (server.serverError()) {
    case QAbstractSocket::AddressInUseError:
        return "the port is in use; take another one, or 0 for any that is free";
    case QAbstractSocket::SocketAccessError:
        return "that is not allowed; ports from 1024 on are for everybody";
    case QAbstractSocket::SocketAddressNotAvailableError:
        return "this machine has no such address";
    default:
        return server.errorString().toStdString();
    }
}

}    // namespace

Clients::Clients(const ClientOptions& clientOptions, Client::Tell tellLine)
    : options(clientOptions), tell(std::move(tellLine)), server(std::make_unique<QTcpServer>())
{
    QObject::connect(server.get(), &QTcpServer::newConnection, server.get(), [this] { welcome(); });
}

// Clients that are gone may not be deleted yet: their connections are gone with them.
Clients::~Clients()
{
    takeLeave();
}

std::string Clients::listen(ListenAddress& address)
{
    const QHostAddress host = hostAddressOf(address.host);
    const std::string what = "cannot serve on " + address.text() + ": ";
    if (host.isNull()) {
        return what + "no such host is known";
    }
    if (!server->listen(host, address.port)) {
        return what + reasonOf(*server);
    }
    address.port = server->serverPort();
    return {};
}

void Clients::welcome()
{
    while (QTcpSocket* connection = server->nextPendingConnection()) {
        if (clients.size() < most) {
            add(connection);
            continue;
        }
        if (!isCrowded) {
            tell("more than " + std::to_string(most) + " connections are refused");
        }
        isCrowded = true;
        connection->abort();
        connection->deleteLater();
    }
}

void Clients::add(QTcpSocket* connection)
{
    auto* const client = new Client(connection, options, tell);
    clients.push_back(client);
    QObject::connect(connection, &QTcpSocket::disconnected, client,
                     [this, client] { remove(client); });
    if (connection->state() != QAbstractSocket::ConnectedState) {
        remove(client);
    }
}

// Others may be at work with the client.
void Clients::remove(Client* client)
{
    const auto place = std::find(clients.begin(), clients.end(), client);
    if (place == clients.end()) {
        return;
    }
    clients.erase(place);
    isCrowded = false;
    if (client->wasServed()) {
        ++served.clients;
        served.bytes += client->bytesSent();
        tell(client->name() + " " + client->farewell() + ", " +
             std::to_string(client->bytesSent()) + " bytes");
    }
    client->deleteLater();
}

void Clients::send(std::span<const std::uint8_t> packed, const Envelope& envelope)
{
    ++served.messages;
    for (Client* client : std::vector(clients)) {
        if (client->receives()) {
            client->send(packed, envelope);
        }
    }
}

bool Clients::isAnybodyThere() const
{
    return std::any_of(clients.begin(), clients.end(),
                       [](const Client* client) { return client->receives(); });
}

bool Clients::keepUp()
{
    for (Client* client : std::vector(clients)) {
        client->dropIfStuck();
    }
    return std::all_of(clients.begin(), clients.end(),
                       [](const Client* client) { return client->waiting() < behindBytes; });
}

void Clients::end()
{
    server->close();
    for (Client* client : std::vector(clients)) {
        client->end();
    }
}

Served Clients::takeLeave()
{
    for (Client* client : std::vector(clients)) {
        client->drop("the server ends");
    }
    return served;
}
