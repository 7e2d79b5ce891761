// One message in JSON, as `export` writes it, becomes a packed message.
#pragma once

#include "RTCM2.h"
#include "RTCM2_format.h"
#include "commands/encode/GivenRecord.h"

#include <rapidjson/document.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

// Sets what is given in a record, encodes it, and takes what that decodes to for the message if it
// is what was given. Not needed are what every message of the kind has, the lengths of what is
// given, the number of data words, for which the smallest is taken that holds everything and agrees
// with it, and whatever is no part of the message itself.
class MessageEncoder {
public:
    // What was wrong, naming kind and member; empty when nothing was.
    [[nodiscard]] Problem encode(const rapidjson::Value& object);

    // The message, valid until the next call. Of no use when something was wrong.
    std::span<const std::uint8_t> packed() const { return bytes; }

private:
    struct Release {
        void operator()(RTCM2_message_s* message) const
        {
            RTCM2_free_message(message);
            delete message;
        }
    };
    using Record = std::unique_ptr<RTCM2_message_s, Release>;

    Problem takeHex(const rapidjson::Value& object);
    Problem takeFields(const rapidjson::Value& object, const rapidjson::Value& fields);
    Problem takeMembers(const RTCM2_kind_s& kind, const rapidjson::Value& fields);
    unsigned wordsFilled() const;
    Problem pack();
    Problem finish(const GivenRecord& given);
    Problem writeFill();

    Record record;                             // what is given
    const rapidjson::Value* fill = nullptr;    // as it is given; null: 1010...
    std::vector<std::uint8_t> bytes;
    std::uint32_t contentBits = 0;    // of those, in front of the fill bits
};
