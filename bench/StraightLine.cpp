#include "References.h"

#include <cstdlib>
#include <cstring>

namespace bench::straight_line {

namespace {

constexpr std::size_t headerSize = 6;

std::uint64_t bigEndian64(const std::uint8_t* bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return __builtin_bswap64(word);
}

std::uint32_t bigEndian32(const std::uint8_t* bytes)
{
    std::uint32_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return __builtin_bswap32(word);
}

template <class Record>
void decodeHeader(const std::uint8_t* bytes, Record& record)
{
    record.parent = nullptr;
    record.Preamble = bytes[0];
    record.Message_Type = bytes[1] >> 2;
    record.Reference_Station_Id = static_cast<std::uint16_t>((bytes[1] & 3) << 8 | bytes[2]);
    record.Modified_Z_Count = static_cast<std::uint16_t>(bytes[3] << 5 | bytes[4] >> 3);
    record.Sequence_No_ = bytes[4] & 7;
    record.No_Of_Data_Words = bytes[5] >> 3;
    record.Station_Health = bytes[5] & 7;
}

template <class Element>
Element* allocate(std::size_t count)
{
    return static_cast<Element*>(std::malloc(count * sizeof(Element)));
}

}    // namespace

std::int32_t decode(Bytes packed, RTCM2_Message_Type_1_s& record)
{
    constexpr std::size_t elementSize = 5;
    const std::uint8_t* bytes = packed.data();
    if (packed.size() < headerSize) {
        return -1;
    }
    record.kind = RTCM2_MESSAGE_TYPE_1;
    decodeHeader(bytes, record);
    record.Ns = static_cast<std::uint8_t>(record.No_Of_Data_Words * 3 / 5);
    const std::size_t size = headerSize + record.Ns * elementSize;
    if (packed.size() < size) {
        return -1;
    }
    record.Corrections = allocate<RTCM2_DGNSS_s>(record.Ns);
    if (record.Corrections == nullptr) {
        return -1;
    }
    bytes += headerSize;
    for (unsigned i = 0; i < record.Ns; ++i, bytes += elementSize) {
        RTCM2_DGNSS_s& element = record.Corrections[i];
        element.kind = RTCM2_DGNSS;
        element.bit_count = elementSize * 8;
        element.parent = &record;
        element.Scale_Factor = bytes[0] >> 7;
        element.UDRE = bytes[0] >> 5 & 3;
        element.Satellite_Id = bytes[0] & 31;
        element.PRC = static_cast<std::int16_t>(bytes[1] << 8 | bytes[2]);
        element.RRC = static_cast<std::int8_t>(bytes[3]);
        element.Issue_Of_Data = bytes[4];
        element.Change_Bit = bytes[4] >> 7;
        element.Time_Of_Day = bytes[4] & 127;
    }
    record.bit_count = static_cast<std::uint32_t>(size * 8);
    return static_cast<std::int32_t>(record.bit_count);
}

std::int32_t decode(Bytes packed, RTCM2_Message_Type_16_s& record)
{
    const std::uint8_t* bytes = packed.data();
    if (packed.size() < headerSize) {
        return -1;
    }
    record.kind = RTCM2_MESSAGE_TYPE_16;
    decodeHeader(bytes, record);
    record.Message_Length = static_cast<std::uint8_t>(record.No_Of_Data_Words * 3);
    const std::size_t size = headerSize + record.Message_Length;
    if (packed.size() < size || record.Message_Length >= sizeof record.Message) {
        return -1;
    }
    // Not memcpy, of which the compiler makes a slow string instruction here.
    std::memmove(record.Message, bytes + headerSize, record.Message_Length);
    record.Message[record.Message_Length] = '\0';
    record.Message[sizeof record.Message - 1] = '\0';
    record.bit_count = static_cast<std::uint32_t>(size * 8);
    return static_cast<std::int32_t>(record.bit_count);
}

std::int32_t decode(Bytes packed, RTCM2_Message_Type_18_s& record)
{
    constexpr std::size_t ownSize = 9;
    constexpr std::size_t elementSize = 6;
    const std::uint8_t* bytes = packed.data();
    if (packed.size() < ownSize) {
        return -1;
    }
    record.kind = RTCM2_MESSAGE_TYPE_18;
    decodeHeader(bytes, record);
    record.Frequency = bytes[6] >> 6;
    record.Smoothing_Interval = bytes[6] >> 4 & 3;
    record.GNSS_Time_Of_Measurement = bigEndian32(bytes + 5) & 0xFFFFF;
    record.Ns = static_cast<std::uint8_t>(record.No_Of_Data_Words * 3 / 6);
    const std::size_t size = ownSize + record.Ns * elementSize;
    if (packed.size() < size) {
        return -1;
    }
    record.Data = allocate<RTCM2_RTK_18_s>(record.Ns);
    if (record.Data == nullptr) {
        return -1;
    }
    bytes += ownSize;
    for (unsigned i = 0; i < record.Ns; ++i, bytes += elementSize) {
        RTCM2_RTK_18_s& element = record.Data[i];
        element.kind = RTCM2_RTK_18;
        element.bit_count = elementSize * 8;
        element.parent = &record;
        element.Multiple_Message = bytes[0] >> 7;
        element.Code = bytes[0] >> 6 & 1;
        element.Constellation = bytes[0] >> 5 & 1;
        element.Satellite_Id = bytes[0] & 31;
        element.PRN = 0;
        element.Data_Quality = bytes[1] >> 5;
        element.Cumulative_Loss_Of_Continuity = bytes[1] & 31;
        element.Carrier_Phase = static_cast<std::int32_t>(bigEndian32(bytes + 2));
    }
    record.bit_count = static_cast<std::uint32_t>(size * 8);
    return static_cast<std::int32_t>(record.bit_count);
}

std::int32_t decode(Bytes packed, RTCM2_Message_Type_24_s& record)
{
    constexpr std::size_t shortSize = 21;
    constexpr std::size_t longSize = 24;
    const std::uint8_t* bytes = packed.data();
    if (packed.size() < shortSize) {
        return -1;
    }
    record.kind = RTCM2_MESSAGE_TYPE_24;
    decodeHeader(bytes, record);
    // 38 bits with the sign in the highest.
    const auto coordinate = [](const std::uint8_t* first) {
        return static_cast<std::int64_t>(bigEndian64(first)) >> 26;
    };
    record.ECEF_X = coordinate(bytes + 6);
    record.Reserved = bytes[10] & 3;
    record.ECEF_Y = coordinate(bytes + 11);
    record.Reserved2 = bytes[15] & 3;
    record.ECEF_Z = static_cast<std::int64_t>(bigEndian64(bytes + 13)) << 24 >> 26;
    record.Constellation = bytes[20] >> 1 & 1;
    record.Height_Indicator = bytes[20] & 1;
    record.Reserved3 = 0;
    std::size_t size = shortSize;
    if (record.Height_Indicator != 0) {
        if (packed.size() < longSize) {
            return -1;
        }
        const std::uint32_t height = bigEndian32(bytes + 20);
        record.Antenna_Height = height >> 6 & 0x3FFFF;
        record.Reserved3 = height & 63;
        size = longSize;
    }
    record.bit_count = static_cast<std::uint32_t>(size * 8);
    return static_cast<std::int32_t>(record.bit_count);
}

}    // namespace bench::straight_line
