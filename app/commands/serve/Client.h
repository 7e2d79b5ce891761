// One connection to the server.
#pragma once

#include "commands/serve/Caster.h"
#include "forms/InputForm.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

class QTcpSocket;

struct ClientOptions {
    InputForm form = InputForm::stream;
    std::optional<CasterOptions> caster{};    // else messages follow without a word
};

// Lives in the thread of its socket. Each client has a writer of its own, so that its stream begins
// with a message.
class Client : public QObject {
public:
    using Tell = std::function<void(const std::string& line)>;

    // So much may wait for a client to take it.
    static constexpr qint64 roomBytes = 1 << 20;

    // Owns the connection. `tell` hears what the client does.
    Client(QTcpSocket* connection, const ClientOptions& clientOptions, Tell tell);

    // Whether messages are for it.
    bool receives() const { return state == State::receiving; }
    // A message of any form that the writer takes. A client that has no room left is dropped.
    void send(std::span<const std::uint8_t> packed, const Envelope& envelope);
    // Bytes that it has not taken yet.
    qint64 waiting() const;
    // Drops a client that has not taken anything for long though bytes wait for it.
    void dropIfStuck();
    // Nothing more comes: it goes when it has taken what waits, unless it is dropped before.
    void end();
    // It goes at once; `reason` is for people.
    void drop(const std::string& reason);

    // Whether messages were ever for it.
    bool wasServed() const { return served; }
    std::uint64_t bytesSent() const { return bytes; }
    // "127.0.0.1:40123"
    const std::string& name() const { return address; }
    // How it went, once it is gone: "left", "dropped: ..."
    const std::string& farewell() const { return goodbye; }

private:
    enum class State { asking, receiving, leaving };
    using Clock = std::chrono::steady_clock;

    void endPatience();
    void takeInput();
    void takeHead();
    void leaveAfter(const std::string& answer);
    void write(std::string_view text);

    const ClientOptions& options;
    QTcpSocket* socket;
    Tell tell;
    std::string address;
    State state;
    QTimer patience;    // with a client that asks or leaves
    bool served = false;
    bool isChunked = false;
    std::string head;    // of the request, so far
    std::unique_ptr<PacketWriter> writer;
    std::vector<std::uint8_t> message;    // in work
    std::uint64_t bytes = 0;
    Clock::time_point lastTaken = Clock::now();
    std::string goodbye = "left";
};
