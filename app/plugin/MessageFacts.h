// What `stats` counts of a message, read without a message object.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

struct FieldParts;
struct KindModel;

struct MessageFacts {
    struct Satellite {
        std::uint64_t system;    // 0 where the kind of the message tells the system
        std::uint64_t number;
    };

    const KindModel* kind = nullptr;
    std::optional<std::uint64_t> station;    // nothing where the kind has no such field
    std::optional<std::uint64_t> time;
    std::optional<std::string_view> text;    // up to the first NUL
    std::vector<Satellite> satellites;
};

class MessageFactsReader {
public:
    virtual ~MessageFactsReader() = default;

    // The facts of a packed message, valid until the next call. Null for what is not of one of the
    // reader's kinds or does not decode: a decoder tells what it is.
    virtual const MessageFacts* read(std::span<const std::uint8_t> packed) = 0;
};

// A reader for these main kinds. They must outlive it.
std::unique_ptr<MessageFactsReader> makeFactsReader(const FieldParts& parts,
                                                    std::span<const KindModel* const> kinds);
