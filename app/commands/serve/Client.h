// One connection to the server.
#pragma once

#include "commands/serve/Caster.h"
#include "forms/InputForm.h"

#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

struct ClientOptions {
    InputForm form = InputForm::stream;
    std::optional<CasterOptions> caster{};                  // else messages follow without a word
    std::function<void(const std::string& line)> tell{};    // hears what clients do
};

// How much was served.
struct Served {
    std::uint64_t messages = 0;
    std::uint64_t clients = 0;    // that messages were for
    std::uint64_t bytes = 0;      // to all of them together
};

// Works in the thread of its socket. Each client has a writer of its own, so that its stream begins
// with a message.
class Client : public std::enable_shared_from_this<Client> {
public:
    // So much may wait for a client to take it.
    static constexpr std::size_t roomBytes = 1 << 20;

    // Everything given must outlive the client, which counts itself and its bytes.
    Client(asio::ip::tcp::socket connection, const asio::ip::tcp::endpoint& peer,
           const ClientOptions& clientOptions, Served& servedToAll);

    // Once, when it is owned by a shared pointer.
    void begin();
    // Whether messages are for it.
    bool receives() const { return state == State::receiving; }
    // A message of any form that the writer takes. A client that has no room left is dropped.
    void send(std::span<const std::uint8_t> packed, const Envelope& envelope);
    // Bytes that it has not taken yet.
    std::size_t waiting() const { return unsent.size(); }
    // Drops a client that has not taken anything for long though bytes wait for it.
    void dropIfStuck();
    // Nothing more comes: it goes when it has taken what waits, unless it is dropped before.
    void end();
    // It goes at once; the farewell is for people: "left", "dropped: ..."
    void leave(const std::string& farewell);
    bool isGone() const { return state == State::gone; }

private:
    enum class State { asking, refused, receiving, ending, closing, gone };
    using Clock = std::chrono::steady_clock;

    void welcome();
    void awaitRequest();
    void refuse(const std::string& reason);
    void read();
    void takeHead();
    void answer(const CasterReply& reply);
    void write(std::string_view text);
    void flush();
    void hangUp();
    void tellFarewell(const std::string& farewell) const;

    const ClientOptions& options;
    Served& served;
    asio::ip::tcp::socket socket;
    asio::steady_timer patience;    // with a client that asks, or that has it all
    std::string name;               // "127.0.0.1:40123"
    State state = State::asking;    // "refused" and "ending" take what is unsent
    bool isChunked = false;
    std::array<char, 4096> come{};
    std::string head;    // of the request, so far
    std::unique_ptr<PacketWriter> writer;
    std::string unsent;    // what the system has no room for
    Clock::time_point lastTaken{};
    std::uint64_t bytes = 0;
};
