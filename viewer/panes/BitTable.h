// The bits of a message in rows, a word each: packed, and as they are sent.
#pragma once

#include "viewer/panes/BitMap.h"

#include "framing/RTCM2_framing.h"

#include <QString>

#include <compare>
#include <vector>

// A bit of a word as it is sent: its data bits and, behind them, its parity bits. Both from 0.
struct WordBit {
    static constexpr int perWord = RTCM2_WORD_DATA_BITS + RTCM2_WORD_PARITY_BITS;

    int word = -1;
    int bit = 0;

    bool isNone() const { return word < 0; }
    bool isParity() const { return bit >= RTCM2_WORD_DATA_BITS; }
    // In the packed message; for data bits alone.
    std::uint32_t packed() const
    {
        return static_cast<std::uint32_t>(word * RTCM2_WORD_DATA_BITS + bit);
    }
    static WordBit ofPacked(std::uint32_t bit)
    {
        const auto position = static_cast<int>(bit);
        return {position / RTCM2_WORD_DATA_BITS, position % RTCM2_WORD_DATA_BITS};
    }
    auto operator<=>(const WordBit&) const = default;
};

struct BitRow {
    QString byte;              // where it begins
    QString hex;               // its bytes
    QString note;              // its characters, or what is special about it
    std::uint32_t bits = 0;    // the first one highest of `count`
    int count = 0;
    int phase = 0;    // bits of its first byte that stand before it
    bool isInverted = false;
    bool isBad = false;

    bool at(int bit) const { return (bits >> (count - 1 - bit) & 1) != 0; }
};

struct BitTable {
    std::vector<BitRow> rows;
    int perByte = 8;    // bits of a byte that are shown

    // Characters before a bit in its row, with a gap between bytes.
    int columnOf(const BitRow& row, int bit) const { return bit + (row.phase + bit) / perByte; }
};

// Each row with its characters where they are text.
BitTable packedTable(const MessageDetail& detail, const BitMap& map);
BitTable airTable(const std::vector<AirWord>& words);
