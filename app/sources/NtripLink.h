// A stream of a caster: ntrip://host:port/mountpoint
#pragma once

#include "sources/Link.h"
#include "sources/NtripExchange.h"
#include "sources/SourceTable.h"

class NtripLink : public Link {
public:
    NtripLink(const InputUrl& inputUrl, const Credentials& caller)
        : url(inputUrl), credentials(caller), exchange(inputUrl, caller)
    {
    }

    bool open(const Wait& wait, const Tell& tell) override;
    std::span<const std::uint8_t> receive(const Wait& wait, const Tell& tell) override;

private:
    std::string refusal(const Wait& wait) const;
    std::string noMountpoint(const Wait& wait) const;

    InputUrl url;
    Credentials credentials;
    NtripExchange exchange;
    bool hasWarned = false;
};

// What streams a caster has, or why that cannot be told.
struct CasterAnswer {
    std::vector<CasterStream> streams;
    std::string problem;    // empty also when the program is asked to end
};

CasterAnswer askCaster(const InputUrl& url, const Credentials& credentials, const Wait& wait);
