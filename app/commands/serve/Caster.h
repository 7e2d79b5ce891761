// What a caster answers to those who ask it for a stream.
#pragma once

#include <string>
#include <string_view>

struct CasterOptions {
    static constexpr std::size_t longestHead = 8192;    // of a request; longer ones are refused

    std::string mountpoint{};
    std::string user{};        // empty: everybody may have the stream
    std::string password{};    // of the user
    std::string table{};       // of sources
    std::string server{};      // how the program names itself
};

struct CasterReply {
    std::string text{};        // to the client
    bool isStream = false;     // messages follow
    bool isChunked = false;    // each as a chunk of HTTP
    std::string about{};       // what was asked for, for people
};

// To the head of a request, empty line included. Clients of version 2 of the protocol name it in
// their request and are answered in HTTP, all others as version 1 has it.
CasterReply casterReply(const CasterOptions& caster, std::string_view head);

// To those who sent no head of a request in time, or one that is too long.
std::string casterRefusal();
