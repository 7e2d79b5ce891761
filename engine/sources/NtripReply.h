// What a caster answers: the head of its reply, in either version of NTRIP.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct NtripReply {
    enum class Kind { stream, sourceTable, page, redirect, refused };

    Kind kind = Kind::refused;
    unsigned status = 0;       // as of HTTP
    std::string statusText;    // "404 Not Found", "ERROR - Bad Password"
    std::string location;      // of a redirect
    bool isChunked = false;
    bool isKnown = true;    // the coding in which it is sent
    bool isBare = false;    // of version 1: see bytesBeforeData()
    std::optional<std::uint64_t> contentLength;
    std::size_t headBytes = 0;    // what follows belongs to the body
};

// What the bytes that came so far say. Nothing when more are needed, which cannot be where they are
// all that come.
std::optional<NtripReply> ntripReply(std::string_view bytes, bool areAll);

// Of version 1, where the head is one line: lines like "Server: X" may stand behind it, an empty
// line, both or neither, and what is none of these is data. Nothing when more bytes are needed to
// tell.
std::optional<std::size_t> bytesBeforeData(std::string_view text);

// Whether they can be the beginning of a reply at all.
bool mayBeNtripReply(std::string_view bytes);
