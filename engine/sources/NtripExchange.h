// One request to a caster, its reply and what follows that, in version 2 of NTRIP or, where the
// caster does not know that, in version 1.
#pragma once

#include "sources/ChunkedBody.h"
#include "sources/Credentials.h"
#include "sources/InputUrl.h"
#include "sources/NtripReply.h"
#include "sources/TcpStream.h"
#include "sources/Wait.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

class NtripExchange {
public:
    NtripExchange(InputUrl caster, Credentials caller)
        : home(std::move(caster)), credentials(std::move(caller))
    {
    }

    // Asks for a mountpoint, or for the source table where the name is empty. False when there is
    // no reply, problem() says why, or when the program is asked to end. Goes where a redirect
    // leads; credentials stay with the host for which they are meant.
    bool ask(const std::string& mountpoint, const Wait& wait);
    const NtripReply& reply() const { return head; }

    // The next bytes of what follows the head, as soon as there are any, valid until the next call;
    // none at the end, after a failure and after so many seconds without any (0 for never).
    std::span<const std::uint8_t> receive(double longestSilence, const Wait& wait);

    const std::string& problem() const { return problemText; }
    bool isAtEnd() const { return atEnd; }

private:
    bool askOnce(const Wait& wait);
    bool isForVersion1(bool isAnswered) const;
    bool redirect();
    std::string request() const;
    bool readHead(const Wait& wait);
    bool takeHead(bool areAll);
    bool fail(const std::string& reason);
    void beginBody(std::string_view behindHead);
    void decode(std::span<const std::uint8_t> bytes);
    void decodeBare(std::span<const std::uint8_t> bytes);
    void decodeChunks(std::span<const std::uint8_t> bytes);
    void decodeCounted(std::span<const std::uint8_t> bytes);
    void endWith(const std::string& reason, bool isOrderly);

    InputUrl home;
    Credentials credentials;
    bool knowsVersion2 = true;
    InputUrl target;
    TcpStream stream;
    std::string received;    // of the head, or before the data of version 1
    NtripReply head;
    ChunkedBody chunks;
    std::uint64_t left = 0;            // of a body whose length is known
    bool isOver = false;               // nothing more comes than what is decoded
    std::vector<std::uint8_t> data;    // decoded
    bool hasData = false;              // that was not yet handed on
    std::string problemText;
    bool atEnd = false;
};
