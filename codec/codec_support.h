// What all decoders and encoders of the codec share. The rendered per-kind functions name members,
// positions and error codes; how a member is tested, read and written stands here.
#pragma once

#include "RTCM2.h"
#include "quarn.h"
#include "quarn_bits.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace rtcm2 {

// The enable flags of the context.
struct EnableFlag {
    explicit constexpr EnableFlag(unsigned kind) : byte((kind + 1) / 8), mask(0x80U >> kind % 8) {}

    bool test(const RTCM2_context_s& context) const { return (context.enabled[byte] & mask) != 0; }
    void set(RTCM2_context_s& context) const
    {
        quarn::replaceBits(context.enabled[byte], mask, mask);
    }
    void clear(RTCM2_context_s& context) const
    {
        quarn::replaceBits(context.enabled[byte], mask, 0);
    }

    unsigned byte;
    unsigned mask;
};

// The number of elements that follows from a word count, in the arithmetic of the stored width: a
// count of too few words wraps to a large one, and decoding then fails where the buffer ends.
template <class Stored, unsigned Times, unsigned Minus, unsigned Over>
constexpr Stored countOf(unsigned words)
{
    return static_cast<Stored>(static_cast<Stored>(words * Times - Minus) / Over);
}

// Some bits of a member that have a member of their own.
template <unsigned Low, unsigned Width>
constexpr std::uint8_t sliceOf(unsigned value)
{
    return static_cast<std::uint8_t>(value >> Low & quarn::lowMask(Width));
}

// The way back: the member with those bits replaced.
template <unsigned Low, unsigned Width>
constexpr void foldSlice(std::uint8_t& member, unsigned part)
{
    quarn::replaceBits(member, static_cast<unsigned>(quarn::lowMask(Width) << Low), part << Low);
}

// Where a decoder or an encoder stands in its buffer, and the first error it met. `Byte` is const
// for decoders.
template <class Byte>
class Position {
public:
    Position(Byte* bytes, std::uint16_t size, std::uint32_t bitOffset)
        : data(bytes), dataSize(size), start(bitOffset), offset(bitOffset)
    {
    }

    bool failed() const { return error < 0; }
    void fail(std::int32_t code) { error = code; }
    std::uint32_t consumed() const { return offset - start; }

    // Whether `width` more bits fit into the buffer. A repeated part may be long, hence 64 bits.
    bool fits(std::uint64_t width) const { return offset + width <= std::uint64_t{dataSize} * 8; }

    // Tests one member: when it does not fit, its code becomes the result.
    bool admit(unsigned width, std::int32_t code)
    {
        if (!fits(width)) {
            fail(code);
            return false;
        }
        return true;
    }

protected:
    // Runs of fixed-width members are tested once when they fit as a whole and start at a byte;
    // `Fixed` then reads or writes them at constant positions. Otherwise `Checked` goes member by
    // member, so that a short buffer gives the code of the first member that does not fit.
    template <unsigned Bits, class Checked, class Fixed, class Record, class Members>
    QUARN_ALWAYS_INLINE void runOf(Record& record, Members members)
    {
        if (failed()) {
            return;
        }
        const bool atByte = offset % 8 == 0;
        if (atByte && fits(Bits)) {
            Fixed fixed{data + offset / 8};
            members(fixed, record);
            offset += Bits;
        } else {
            const Reached reached = oneByOne<Checked>(data, dataSize, offset, record, members);
            offset = reached.offset;
            error = reached.error;
            if (atByte && !failed()) {    // the run did not fit, so one of its members did not
                quarn_assert_failed(__FILE__, __LINE__, "error < 0");
            }
        }
    }

private:
    struct Reached {
        std::uint32_t offset;
        std::int32_t error;
    };

    // Apart from the straight path and on an object of its own, so that this one can stay in
    // registers there.
    template <class Checked, class Record, class Members>
    QUARN_COLD static Reached oneByOne(Byte* data, std::uint16_t dataSize, std::uint32_t offset,
                                       Record& record, Members members)
    {
        Checked checked(data, dataSize, offset);
        members(checked, record);
        return {checked.offset, checked.error};
    }

protected:
    Byte* data;
    std::uint16_t dataSize;
    std::uint32_t start;
    std::uint32_t offset;
    std::int32_t error = 0;
};

// Reads members at constant positions of a run that is known to fit.
template <unsigned Bits>
struct FixedReader {
    template <unsigned Offset, unsigned Width, class T>
    bool get(T& member, std::int32_t)
    {
        member = quarn::read<T, Offset, Width, (Bits + 7) / 8>(bytes);
        return true;
    }

    const std::uint8_t* bytes;
};

// One decoder at work.
class Decoding : public Position<const std::uint8_t> {
public:
    using Position::Position;

    template <unsigned Bits, class Record, class Members>
    QUARN_ALWAYS_INLINE void run(Record& record, Members members)
    {
        this->runOf<Bits, Decoding, FixedReader<Bits>>(record, members);
    }

    // Reads one member wherever it stands.
    template <unsigned, unsigned Width, class T>
    bool get(T& member, std::int32_t code)
    {
        if (!admit(Width, code)) {
            return false;
        }
        member = quarn::fromBits<T>(quarn::readBits(data, offset, Width), Width);
        offset += Width;
        return true;
    }

    // Reads `length` characters or bytes into a member of the record with room for `limit`.
    template <class T>
    void elements(T* member, unsigned length, unsigned limit, std::int32_t shortBuffer,
                  std::int32_t full)
    {
        if (!failed() && length <= limit && offset % 8 == 0 && fits(8 * length)) {
            // Not memcpy: as the length is known to be short, it becomes a slow string instruction.
            std::memmove(member, data + offset / 8, length);
            offset += 8 * length;
            return;
        }
        for (unsigned i = 0; !failed() && i < length; ++i) {
            if (i >= limit) {
                fail(full);
            } else {
                get<0, 8>(member[i], shortBuffer);
            }
        }
    }

    // Allocates `count` sub-records and decodes them; the array belongs to the record from then on,
    // whatever comes of them.
    template <class Element, class Record, class Count>
    void records(Record*& array, Count& count, void* parent, std::int32_t noMemory)
    {
        array = static_cast<Record*>(std::malloc(count * sizeof(Record)));
        if (array == nullptr && count != 0) {
            count = 0;
            if (!failed()) {
                fail(noMemory);
            }
        }
        if (failed()) {
            return;
        }
        // Elements without optional members have a fixed width.
        if constexpr (requires { Element::bits; }) {
            if (Element::bits % 8 == 0 && offset % 8 == 0 &&
                fits(std::uint64_t{Element::bits} * count)) {
                fixedRecords<Element>(array, count, parent);
                return;
            }
        }
        std::uint32_t end = offset;
        for (unsigned i = 0; !failed() && i < count; ++i) {
            const std::int32_t result = Element::decode(array + i, &end, data, dataSize, parent, 0);
            if (result < 0) {
                fail(result);
            }
        }
        offset = end;
    }

    // The length as told from outside, 0 for none: one shorter than what was consumed is an error,
    // a longer one skips padding.
    void applyDeclaredLength(std::uint32_t declaredLength, std::int32_t underflow)
    {
        if (failed() || declaredLength == 0) {
            return;
        }
        if (consumed() > declaredLength) {
            fail(underflow);
        } else {
            skipped = declaredLength - consumed();
            offset += skipped;
        }
    }

    // Ends the decoder: stores how many bits the record covers and where the next one starts, and
    // applies the declared length.
    std::int32_t finish(std::uint32_t& bitCount, std::uint32_t* end, std::uint32_t declaredLength,
                        std::int32_t underflow, std::int32_t internal)
    {
        bitCount = consumed() - skipped;
        applyDeclaredLength(declaredLength, underflow);
        *end = offset;
        if (failed()) {
            return error;
        }
        return offset < start ? internal : static_cast<std::int32_t>(consumed());
    }

private:
    std::uint32_t skipped = 0;    // what a declared length covers besides the record

    // Sub-records that are known to fit, each at a byte.
    template <class Element, class Record>
    void fixedRecords(Record* array, unsigned count, void* parent)
    {
        FixedReader<Element::bits> fixed{data + offset / 8};
        for (unsigned i = 0; i < count; ++i) {
            Record& record = array[i];
            Element::init(&record);
            record.bit_count = Element::bits;
            record.parent = parent;
            Element::get(fixed, record);
            fixed.bytes += Element::bits / 8;
        }
        offset += Element::bits * count;
    }
};

// Writes members at constant positions of a run that is known to fit.
struct FixedWriter {
    template <unsigned Offset, unsigned Width, class T>
    bool put(T member, std::int32_t)
    {
        quarn::write<Offset, Width>(bytes, member);
        return true;
    }

    std::uint8_t* bytes;
};

// One encoder at work.
class Encoding : public Position<std::uint8_t> {
public:
    using Position::Position;

    template <unsigned Bits, class Record, class Members>
    QUARN_ALWAYS_INLINE void run(Record& record, Members members)
    {
        this->runOf<Bits, Encoding, FixedWriter>(record, members);
    }

    // Writes one member wherever it stands.
    template <unsigned, unsigned Width, class T>
    bool put(T member, std::int32_t code)
    {
        if (!admit(Width, code)) {
            return false;
        }
        quarn::writeBits(data, offset, Width, static_cast<std::uint64_t>(member));
        offset += Width;
        return true;
    }

    // Writes `length` characters or bytes of a member of the record with room for `limit`.
    template <class T>
    void elements(const T* member, unsigned length, unsigned limit, std::int32_t shortBuffer,
                  std::int32_t full)
    {
        if (!failed() && length <= limit && offset % 8 == 0 && fits(8 * length)) {
            std::memmove(data + offset / 8, member, length);
            offset += 8 * length;
            return;
        }
        for (unsigned i = 0; !failed() && i < length; ++i) {
            if (i >= limit) {
                fail(full);
            } else {
                put<0, 8>(member[i], shortBuffer);
            }
        }
    }

    // Encodes the record's array. A count without an array is the caller's mistake.
    template <auto encodeElement, class Record>
    void records(Record* array, unsigned count, std::int32_t noArray)
    {
        if (!failed() && array == nullptr && count != 0) {
            fail(noArray);
        }
        for (unsigned i = 0; !failed() && i < count; ++i) {
            const std::int32_t result = encodeElement(array + i, data, dataSize, &offset);
            if (result < 0) {
                fail(result);
            }
        }
    }

    // Ends the encoder: adds the bits written to the record's count. Returns them or the error.
    std::int32_t finish(std::uint32_t& bitCount, std::uint32_t* end)
    {
        bitCount += consumed();
        *end = offset;
        return failed() ? error : static_cast<std::int32_t>(consumed());
    }
};

// Copies as much of a NUL-terminated text as `limit` allows and ends it with a NUL. Returns the
// number of characters.
inline std::uint8_t copyText(RTCM2_char* target, const char* text, std::size_t limit)
{
    const std::size_t length = std::min(std::strlen(text), limit);
    std::memcpy(target, text, length);
    target[length] = '\0';
    return static_cast<std::uint8_t>(length);
}

}    // namespace rtcm2
