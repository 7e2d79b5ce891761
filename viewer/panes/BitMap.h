// Which bits of a packed message belong to which field.
#pragma once

#include "viewer/panes/FieldPlace.h"

#include <cstdint>
#include <map>
#include <vector>

// Bits of a packed message, counted from 0.
struct BitRange {
    std::uint32_t first = 0;
    std::uint32_t count = 0;

    std::uint32_t end() const { return first + count; }
    bool holds(std::uint32_t bit) const { return bit >= first && bit < end(); }
    bool operator==(const BitRange&) const = default;
};

class BitMap {
public:
    BitMap() = default;
    explicit BitMap(const MessageDetail& detail);

    // Bits of the packed message.
    std::uint32_t size() const { return static_cast<std::uint32_t>(owners.size()); }

    // The field that has the bit: where a field is a part of another one, the part, if it means
    // something in this message. None where no field has it.
    FieldPlace at(std::uint32_t bit) const
    {
        return bit < owners.size() ? owners[bit] : FieldPlace();
    }

    // The bits of a field, or of an element. Of a field that is not in the message but follows from
    // another one the bits of that; none for what is absent or constant.
    BitRange bitsOf(const FieldPlace& place) const;

    // Whether the bit fills up the message behind its last field.
    bool isFill(std::uint32_t bit) const { return hasLayout && at(bit).isNone(); }

private:
    void add(const FieldPlace& place, const FieldSpot& spot);
    void addArray(const FieldPlace& place, const FieldSpot& spot);

    std::vector<FieldPlace> owners;    // by bit
    std::map<FieldPlace, BitRange> ranges;
    bool hasLayout = false;    // it is known where the last field ends
};
