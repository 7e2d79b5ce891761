// One message in JSON, as `export` writes it, becomes a packed message.
#pragma once

#include "RTCM2.h"
#include "RTCM2_format.h"
#include "commands/encode/GivenRecord.h"

#include <rapidjson/document.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Sets what is given in a record, encodes it, and takes what that decodes to for the message if it
// is what was given. Not needed are what every message of the kind has, the lengths of what is
// given, the number of data words, for which the smallest is taken that holds everything and agrees
// with it, and whatever is no part of the message itself.
class MessageEncoder {
public:
    // The packed message, valid until the next call; empty when there was a problem.
    std::span<const std::uint8_t> encode(const rapidjson::Value& object);

    // What was wrong, naming kind and member.
    const std::string& problem() const { return problemText; }

private:
    // A record that releases what it holds.
    struct Record {
        Record() = default;
        ~Record() { clear(); }
        Record(const Record&) = delete;
        Record& operator=(const Record&) = delete;
        void clear()
        {
            RTCM2_free_message(&message);
            message = {};
        }

        RTCM2_message_s message = {};
    };
    using Fill = std::optional<std::string_view>;

    Problem takeObject(const rapidjson::Value& object);
    Problem takeHex(const rapidjson::Value& object);
    Problem takeFields(const rapidjson::Value& object, const rapidjson::Value& fields);
    Problem readFill(const rapidjson::Value& object);
    Problem takeMembers(const RTCM2_kind_s& kind, const rapidjson::Value& fields);
    void begin(const RTCM2_kind_s& kind, unsigned words);
    unsigned wordsFilled() const;
    Problem pack();
    Problem finish(const GivenRecord& given);
    Problem writeFill();

    Record record;     // what is given
    Record decoded;    // what it has become
    Fill fill;
    std::vector<std::uint8_t> packed;
    std::uint32_t contentBits = 0;    // of those, in front of the fill bits
    std::string problemText;
};
