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
    bool isFirst = true;    // of its openings
};

CasterAnswer askCaster(const InputUrl& url, const Credentials& credentials, const Wait& wait);
