#include "commands/serve/Client.h"

#include <asio/buffer.hpp>

#include <charconv>
#include <sstream>

namespace {

constexpr std::chrono::seconds longestPatience{10};
constexpr std::chrono::seconds longestStuck{10};    // where the others wait for a client
constexpr std::chrono::seconds longestClosing{2};
constexpr int systemBytes = 1 << 16;    // what the system holds for a client comes late to it
constexpr std::size_t longestAbout = 120;

std::string nameOf(asio::ip::tcp::endpoint peer)
{
    const asio::ip::address address = peer.address();
    if (address.is_v6() && address.to_v6().is_v4_mapped()) {
        peer.address(make_address_v4(asio::ip::v4_mapped, address.to_v6()));
    }
    std::ostringstream text;
    text << peer;
    return text.str();
}

// Of HTTP.
std::string chunkOf(std::string_view text)
{
    std::array<char, 16> size{};
    char* const end = std::to_chars(size.begin(), size.end(), text.size(), 16).ptr;
    return std::string(size.begin(), end).append("\r\n").append(text).append("\r\n");
}

}    // namespace

Client::Client(asio::ip::tcp::socket connection, const asio::ip::tcp::endpoint& peer,
               const ClientOptions& clientOptions, Served& servedToAll)
    : options(clientOptions), served(servedToAll), socket(std::move(connection)),
      patience(socket.get_executor()), name(nameOf(peer)), writer(makeWriter(options.form))
{
}

void Client::begin()
{
    asio::error_code ignored;    // when it is gone already, reading tells
    socket.non_blocking(true, ignored);
    socket.set_option(asio::socket_base::send_buffer_size(systemBytes), ignored);
    socket.set_option(asio::ip::tcp::no_delay(true), ignored);
    socket.set_option(asio::socket_base::keep_alive(true), ignored);
    if (options.caster) {
        awaitRequest();
    } else {
        options.tell(name + " connected");
        welcome();
    }
    read();
}

void Client::welcome()
{
    state = State::receiving;
    ++served.clients;
}

void Client::awaitRequest()
{
    patience.expires_after(longestPatience);
    patience.async_wait([self = shared_from_this()](const asio::error_code& error) {
        if (!error && self->state == State::asking) {
            self->refuse("no request came within 10 s");
        }
    });
}

void Client::refuse(const std::string& reason)
{
    answer({.text = casterRefusal(), .about = "refused: " + reason});
}

// What comes behind the head of a request, such as the position of a receiver, is of no interest.
void Client::read()
{
    socket.async_read_some(
        asio::buffer(come),
        [self = shared_from_this()](const asio::error_code& error, std::size_t count) {
            if (error) {
                self->leave("left");
                return;
            }
            if (self->state == State::asking) {
                self->head.append(self->come.data(), count);
                self->takeHead();
            }
            self->read();
        });
}

void Client::takeHead()
{
    if (head.find("\r\n\r\n") != std::string::npos || head.find("\n\n") != std::string::npos) {
        answer(casterReply(*options.caster, head));
    } else if (head.size() > CasterOptions::longestHead) {
        refuse("the head of its request has no end");
    }
}

// Who gets no stream goes as soon as he has taken the answer.
void Client::answer(const CasterReply& reply)
{
    head = {};
    options.tell(name + " " + reply.about.substr(0, longestAbout));
    isChunked = reply.isChunked;
    if (reply.isStream) {
        patience.cancel();
        welcome();
    } else {
        state = State::refused;
    }
    write(reply.text);
}

// As long as something is unsent, flush() waits for the socket to take more.
void Client::write(std::string_view text)
{
    const bool isFree = unsent.empty();
    unsent += text;
    if (isFree) {
        flush();
    }
}

void Client::flush()
{
    asio::error_code error;
    unsent.erase(0, socket.write_some(asio::buffer(unsent), error));
    lastTaken = Clock::now();
    if (error && error != asio::error::would_block) {
        leave("left");
    } else if (!unsent.empty()) {
        socket.async_wait(asio::socket_base::wait_write,
                          [self = shared_from_this()](const asio::error_code& failed) {
                              if (!failed) {
                                  self->flush();
                              }
                          });
    } else if (state == State::refused || state == State::ending) {
        hangUp();
    }
}

// Closed before the client's end is, a socket at which something arrives takes back what is still
// on its way to the client.
void Client::hangUp()
{
    tellFarewell("has it all");
    state = State::closing;
    asio::error_code ignored;
    socket.shutdown(asio::socket_base::shutdown_send, ignored);
    patience.expires_after(longestClosing);
    patience.async_wait([self = shared_from_this()](const asio::error_code& error) {
        if (!error) {
            self->leave({});
        }
    });
}

void Client::send(std::span<const std::uint8_t> packed, const Envelope& envelope)
{
    std::vector<std::uint8_t> message;
    writer->setEnvelope(envelope);
    if (!writer->append(packed, message)) {
        return;
    }
    if (unsent.size() > roomBytes) {
        leave("dropped: it does not take what is sent; 1 MB waits");
        return;
    }
    const std::string_view text{reinterpret_cast<const char*>(message.data()), message.size()};
    bytes += text.size();
    served.bytes += text.size();
    write(isChunked ? chunkOf(text) : std::string(text));
}

void Client::dropIfStuck()
{
    if (!unsent.empty() && Clock::now() - lastTaken > longestStuck) {
        leave("dropped: it has taken nothing for 10 s");
    }
}

void Client::end()
{
    if (state == State::asking) {
        leave({});
    } else if (state == State::receiving) {
        state = State::ending;
        write(isChunked ? "0\r\n\r\n" : "");
    }
}

void Client::tellFarewell(const std::string& farewell) const
{
    if (state == State::receiving || state == State::ending) {
        options.tell(name + " " + farewell + ", " + std::to_string(bytes) + " bytes");
    }
}

void Client::leave(const std::string& farewell)
{
    tellFarewell(farewell);
    state = State::gone;
    unsent.clear();
    patience.cancel();
    asio::error_code ignored;
    socket.close(ignored);
}
