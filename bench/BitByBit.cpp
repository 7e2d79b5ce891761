#include "References.h"

#include <cstdlib>

namespace bench::bit_by_bit {

namespace {

class Reader {
public:
    explicit Reader(Bytes packed) : packed_(packed) {}

    template <class T>
    void operator()(T& member, unsigned width)
    {
        std::uint64_t value = 0;
        if (position_ + width > packed_.size() * 8) {
            failed_ = true;
            return;
        }
        for (unsigned i = 0; i < width; ++i, ++position_) {
            value = value << 1 | (packed_[position_ / 8] >> (7 - position_ % 8) & 1U);
        }
        if (std::is_signed_v<T> && (value >> (width - 1) & 1) != 0) {
            value -= std::uint64_t{1} << width % 64;
        }
        member = static_cast<T>(value);
    }

    std::size_t position() const { return position_; }
    bool failed() const { return failed_; }

private:
    Bytes packed_;
    std::size_t position_ = 0;
    bool failed_ = false;
};

class Writer {
public:
    explicit Writer(std::span<std::uint8_t> packed) : packed_(packed) {}

    template <class T>
    void operator()(const T& member, unsigned width)
    {
        if (position_ + width > packed_.size() * 8) {
            failed_ = true;
            return;
        }
        for (unsigned i = width; i-- > 0; ++position_) {
            const unsigned mask = 0x80U >> position_ % 8;
            std::uint8_t& byte = packed_[position_ / 8];
            const bool on = (static_cast<std::uint64_t>(member) >> i & 1) != 0;
            byte = static_cast<std::uint8_t>(on ? byte | mask : byte & ~mask);
        }
    }

    std::size_t position() const { return position_; }
    bool failed() const { return failed_; }

private:
    std::span<std::uint8_t> packed_;
    std::size_t position_ = 0;
    bool failed_ = false;
};

// The layouts, the same for reading and writing.

template <class Bits, class Record>
void header(Bits& bits, Record& r)
{
    bits(r.Preamble, 8);
    bits(r.Message_Type, 6);
    bits(r.Reference_Station_Id, 10);
    bits(r.Modified_Z_Count, 13);
    bits(r.Sequence_No_, 3);
    bits(r.No_Of_Data_Words, 5);
    bits(r.Station_Health, 3);
}

template <class Bits, class Record>
void correction(Bits& bits, Record& r)
{
    bits(r.Scale_Factor, 1);
    bits(r.UDRE, 2);
    bits(r.Satellite_Id, 5);
    bits(r.PRC, 16);
    bits(r.RRC, 8);
    bits(r.Issue_Of_Data, 8);
}

template <class Bits, class Record>
void phase(Bits& bits, Record& r)
{
    bits(r.Multiple_Message, 1);
    bits(r.Code, 1);
    bits(r.Constellation, 1);
    bits(r.Satellite_Id, 5);
    bits(r.Data_Quality, 3);
    bits(r.Cumulative_Loss_Of_Continuity, 5);
    bits(r.Carrier_Phase, 32);
}

template <class Bits, class Record>
void measurement(Bits& bits, Record& r)
{
    bits(r.Frequency, 2);
    bits(r.Smoothing_Interval, 2);
    bits(r.GNSS_Time_Of_Measurement, 20);
}

template <class Bits, class Record>
void antenna(Bits& bits, Record& r)
{
    bits(r.ECEF_X, 38);
    bits(r.Reserved, 2);
    bits(r.ECEF_Y, 38);
    bits(r.Reserved2, 2);
    bits(r.ECEF_Z, 38);
    bits(r.Constellation, 1);
    bits(r.Height_Indicator, 1);
    if (r.Height_Indicator != 0) {
        bits(r.Antenna_Height, 18);
        bits(r.Reserved3, 6);
    }
}

template <class Bits>
std::int32_t result(const Bits& bits)
{
    return bits.failed() ? -1 : static_cast<std::int32_t>(bits.position());
}

template <class Record>
std::int32_t decoded(const Reader& bits, Record& record, RTCM2_message_enum kind)
{
    record.kind = kind;
    record.parent = nullptr;
    record.bit_count = static_cast<std::uint32_t>(bits.position());
    return result(bits);
}

template <class Element>
bool allocate(Element*& array, std::size_t count)
{
    array = static_cast<Element*>(std::malloc(count * sizeof(Element)));
    return array != nullptr;
}

}    // namespace

std::int32_t decode(Bytes packed, RTCM2_Message_Type_1_s& record)
{
    Reader bits(packed);
    header(bits, record);
    record.Ns = static_cast<std::uint8_t>(record.No_Of_Data_Words * 3 / 5);
    if (!allocate(record.Corrections, record.Ns)) {
        return -1;
    }
    for (unsigned i = 0; i < record.Ns; ++i) {
        RTCM2_DGNSS_s& element = record.Corrections[i];
        element.kind = RTCM2_DGNSS;
        element.bit_count = 40;
        element.parent = &record;
        correction(bits, element);
        element.Change_Bit = element.Issue_Of_Data >> 7;
        element.Time_Of_Day = element.Issue_Of_Data & 127;
    }
    return decoded(bits, record, RTCM2_MESSAGE_TYPE_1);
}

std::int32_t decode(Bytes packed, RTCM2_Message_Type_16_s& record)
{
    Reader bits(packed);
    header(bits, record);
    record.Message_Length = static_cast<std::uint8_t>(record.No_Of_Data_Words * 3);
    if (record.Message_Length >= sizeof record.Message) {
        return -1;
    }
    for (unsigned i = 0; i < record.Message_Length; ++i) {
        bits(record.Message[i], 8);
    }
    record.Message[record.Message_Length] = '\0';
    record.Message[sizeof record.Message - 1] = '\0';
    return decoded(bits, record, RTCM2_MESSAGE_TYPE_16);
}

std::int32_t decode(Bytes packed, RTCM2_Message_Type_18_s& record)
{
    Reader bits(packed);
    header(bits, record);
    measurement(bits, record);
    record.Ns = static_cast<std::uint8_t>(record.No_Of_Data_Words * 3 / 6);
    if (!allocate(record.Data, record.Ns)) {
        return -1;
    }
    for (unsigned i = 0; i < record.Ns; ++i) {
        RTCM2_RTK_18_s& element = record.Data[i];
        element.kind = RTCM2_RTK_18;
        element.bit_count = 48;
        element.parent = &record;
        element.PRN = 0;
        phase(bits, element);
    }
    return decoded(bits, record, RTCM2_MESSAGE_TYPE_18);
}

std::int32_t decode(Bytes packed, RTCM2_Message_Type_24_s& record)
{
    Reader bits(packed);
    record.Reserved3 = 0;
    header(bits, record);
    antenna(bits, record);
    return decoded(bits, record, RTCM2_MESSAGE_TYPE_24);
}

std::int32_t encode(std::span<std::uint8_t> packed, const RTCM2_Message_Type_1_s& record)
{
    Writer bits(packed);
    header(bits, record);
    for (unsigned i = 0; i < record.Ns; ++i) {
        correction(bits, record.Corrections[i]);
    }
    return result(bits);
}

std::int32_t encode(std::span<std::uint8_t> packed, const RTCM2_Message_Type_16_s& record)
{
    Writer bits(packed);
    header(bits, record);
    for (unsigned i = 0; i < record.Message_Length; ++i) {
        bits(record.Message[i], 8);
    }
    return result(bits);
}

std::int32_t encode(std::span<std::uint8_t> packed, const RTCM2_Message_Type_18_s& record)
{
    Writer bits(packed);
    header(bits, record);
    measurement(bits, record);
    for (unsigned i = 0; i < record.Ns; ++i) {
        phase(bits, record.Data[i]);
    }
    return result(bits);
}

std::int32_t encode(std::span<std::uint8_t> packed, const RTCM2_Message_Type_24_s& record)
{
    Writer bits(packed);
    header(bits, record);
    antenna(bits, record);
    return result(bits);
}

bool Framer::goodParity() const
{
    // For D25 to D30: the data bits d1 (lowest digit of the first number) to d24 that enter it.
    static constexpr const char* equations[] = {
        "111011000111110011010010", "011101100011111001101001", "101110110001111100110100",
        "010111011000111110011010", "101011101100011111001101", "001011011110101000100111"};
    static constexpr bool beginsWithD29[] = {true, false, true, false, false, true};
    const auto bit = [this](unsigned weight) { return (received_ >> weight & 1) != 0; };
    const bool d29 = bit(31);
    const bool d30 = bit(30);
    for (unsigned equation = 0; equation < 6; ++equation) {
        bool parity = beginsWithD29[equation] ? d29 : d30;
        for (unsigned d = 0; d < 24; ++d) {
            if (equations[equation][d] == '1') {
                parity ^= bit(29 - d) ^ d30;
            }
        }
        if (parity != bit(5 - equation)) {
            return false;
        }
    }
    return true;
}

bool Framer::pushBit(bool bit)
{
    constexpr std::size_t bytesOfWord = 3;
    constexpr std::uint32_t preamble = 0x66;
    received_ = received_ << 1 | (bit ? 1 : 0);
    const std::uint32_t inversion = (received_ >> 30 & 1) != 0 ? 0xFFFFFF : 0;
    const std::uint32_t data = (received_ >> 6 & 0xFFFFFF) ^ inversion;
    ++bitsOfWord_;
    if (inMessage_ ? bitsOfWord_ < 30 : data >> 16 != preamble) {
        return false;
    }
    bitsOfWord_ = 0;
    const std::size_t declared = message_.size() > 5 ? 2U + (message_[5] >> 3) : 0;
    if (!inMessage_ || message_.size() == declared * bytesOfWord) {
        message_.clear();
    }
    inMessage_ = goodParity() && (!message_.empty() || data >> 16 == preamble);
    if (!inMessage_) {
        return false;
    }
    for (const unsigned shift : {16U, 8U, 0U}) {
        message_.push_back(static_cast<std::uint8_t>(data >> shift));
    }
    return message_.size() >= 2 * bytesOfWord &&
           message_.size() == (2U + (message_[5] >> 3)) * bytesOfWord;
}

}    // namespace bench::bit_by_bit
