// Everything that is known of one message, or of one damaged place, to be shown.
#pragma once

#include "session/Found.h"
#include "session/TableRecord.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// A byte of the input that carries bits of a word.
struct AirByte {
    std::uint64_t position = 0;    // in the input
    std::uint8_t value = 0;        // as it was received
};

// A word as it was received.
struct AirWord {
    std::uint64_t byte = 0;    // of the input in which the first bit stands
    unsigned bit = 0;          // which of that byte's six bits it is, 0 the first one sent
    std::uint32_t data = 0;    // 24 data bits, the first one sent highest, with an inversion undone
    bool goodParity = true;
    bool inverted = false;              // the data bits were sent inverted
    std::uint32_t received = 0;         // all bits as they came, the first one sent highest
    std::vector<AirByte> carriers{};    // which they came in
};

// Owns its record, so that it can be kept for as long as it is shown.
struct MessageDetail {
    Found::What what = Found::What::message;
    const KindModel* kind = nullptr;    // null where it is unknown what kind it was to be
    const void* record = nullptr;       // of the kind; null where there is none to show

    std::vector<std::uint8_t> packed{};    // as it was decoded; of a damaged one what came of it
    std::size_t bits = 0;                  // of `packed` that the kind's layout consumed
    std::vector<AirWord> words{};          // empty where the form has no words with parity

    std::uint64_t number = 0;    // in its input, from 1
    std::uint64_t begin = 0;     // byte of the input in which it begins
    std::uint64_t end = 0;       // one past the byte in which it ends
    Envelope envelope{};

    std::string text{};      // what is wrong; empty where nothing is
    bool isShort = false;    // fewer words came than it declares

    std::unique_ptr<TableRecord> table{};    // holds the record
};
