// What a session finds in an input, message by message.
#pragma once

#include "format/FormatModel.h"
#include "forms/Envelope.h"
#include "plugin/MessageReference.h"

#include <cstdint>
#include <span>
#include <string>

// One message, or a stretch of the input that gave none.
struct Found {
    enum class What : std::uint8_t {
        message,        // decoded
        unreported,     // decoded through the table, since the decoder reports its kind to nobody
        damaged,        // bad parity, or bytes where a message had to begin
        truncated,      // the input ends inside a message
        unknownType,    // a message of no kind that the decoder knows
        misfit,         // a message of a known kind whose content does not fit
    };

    What what = What::message;
    std::uint64_t number = 0;    // in its input, from 1
    std::uint64_t begin = 0;     // byte of the input in which it begins
    std::uint64_t end = 0;       // one past the byte in which it ends

    // Of a message, and of one of unknown type with the unknown kind:
    const KindModel* kind = nullptr;
    const void* record = nullptr;
    MessageReference message;    // holds the record, where the decoder reports the kind
    std::size_t bits = 0;        // of the packed message that the kind's layout consumed

    std::int32_t result = 0;    // the decoder's
    std::string text;           // what is wrong, as it is known inside; empty for messages
    // Fewer words came than the message declares: it has the elements that came as a whole, and
    // `bytes` the words, with a header that declares them.
    bool isShort = false;

    const Envelope* envelope = nullptr;    // what came with it; never null while a sink takes it

    // The packed message as it was decoded, or would have been; of a damaged or truncated one the
    // words before the place where it broke off. Valid while a sink takes it.
    std::span<const std::uint8_t> bytes;

    // Whether there is a record to show.
    bool hasRecord() const
    {
        return what == What::message || what == What::unreported || what == What::unknownType;
    }
};
