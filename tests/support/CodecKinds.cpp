#include "support/CodecKinds.h"

#include "RTCM2_layouts.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <type_traits>

namespace {

// Members of main records, and those that only sub-records have.
// clang-format off
#define FOR_EACH_MAIN_MEMBER(APPLY)                                                                \
    APPLY(Preamble) APPLY(Message_Type) APPLY(Reference_Station_Id) APPLY(Modified_Z_Count)        \
    APPLY(Sequence_No_) APPLY(No_Of_Data_Words) APPLY(Station_Health) APPLY(Station_Health_Flag)   \
    APPLY(Ns) APPLY(Version) APPLY(Source) APPLY(Spare) APPLY(Slot_Bitmap) APPLY(PRN_Bitmap)       \
    APPLY(Frequency) APPLY(Smoothing_Interval) APPLY(GNSS_Time_Of_Measurement)                     \
    APPLY(Message_Length) APPLY(Data_Length) APPLY(Serial_Flag) APPLY(NAD) APPLY(Setup_Id)         \
    APPLY(NAS) APPLY(ECEF_X) APPLY(ECEF_Y) APPLY(ECEF_Z) APPLY(L1_ECEF_Delta_X)                    \
    APPLY(L1_ECEF_Delta_Y) APPLY(L1_ECEF_Delta_Z) APPLY(L2_ECEF_Delta_X) APPLY(L2_ECEF_Delta_Y)    \
    APPLY(L2_ECEF_Delta_Z) APPLY(Reserved) APPLY(Reserved2) APPLY(Reserved3) APPLY(AT_Indicator)   \
    APPLY(ARP_Indicator) APPLY(Height_Indicator) APPLY(Phase_Center_Height) APPLY(Antenna_Height)  \
    APPLY(Constellation)

#define FOR_EACH_OTHER_MEMBER(APPLY)                                                               \
    APPLY(R) APPLY(G) APPLY(Satellite_Id) APPLY(Delay) APPLY(Rate_Of_Change) APPLY(Scale_Factor)   \
    APPLY(UDRE) APPLY(PRC) APPLY(RRC) APPLY(Issue_Of_Data) APPLY(Change_Bit) APPLY(Time_Of_Day)    \
    APPLY(Multiple_Message) APPLY(Code) APPLY(PRN) APPLY(Data_Quality)                             \
    APPLY(Cumulative_Loss_Of_Continuity) APPLY(Carrier_Phase) APPLY(Multipath_Error)               \
    APPLY(Pseudorange) APPLY(Issue_Of_Data_Time_Of_Day) APPLY(Carrier_Phase_Correction)            \
    APPLY(Range_Rate_Correction_Factor) APPLY(Pseudorange_Correction_Factor)                       \
    APPLY(Pseudorange_Correction) APPLY(Range_Rate_Correction) APPLY(PSF) APPLY(IODE) APPLY(SFO)   \
    APPLY(SFC) APPLY(SF) APPLY(Delta_X) APPLY(Delta_Y) APPLY(Delta_Z) APPLY(Delta_T) APPLY(RoC_X)  \
    APPLY(RoC_Y) APPLY(RoC_Z) APPLY(Tb) APPLY(Clock) APPLY(WL_Bias)
// clang-format on

#define LIST_MEMBER(NAME)                                                                          \
    if constexpr (requires { record.NAME; }) {                                                     \
        fields[prefix + #NAME] = static_cast<double>(record.NAME);                                 \
    }

template <class Record>
void listOtherMembers(const Record& record, const std::string& prefix, Fields& fields)
{
    FOR_EACH_OTHER_MEMBER(LIST_MEMBER)
}

template <class Record>
void listMembers(const Record& record, const std::string& prefix, Fields& fields)
{
    fields[prefix + "kind"] = record.kind;
    fields[prefix + "bit_count"] = record.bit_count;
    FOR_EACH_MAIN_MEMBER(LIST_MEMBER)
    listOtherMembers(record, prefix, fields);
}

template <class T>
void listCharacters(const T* characters, unsigned count, const std::string& name, Fields& fields)
{
    for (unsigned i = 0; i < count; ++i) {
        fields[name + "." + std::to_string(i)] = static_cast<std::uint8_t>(characters[i]);
    }
}

// The array of sub-records, whatever its name.
template <class Record>
auto arrayOf(const Record& record)
{
    if constexpr (requires { record.Corrections->kind; }) {
        return record.Corrections;
    } else if constexpr (requires { record.Data->kind; }) {
        return record.Data;
    } else {
        return nullptr;
    }
}

template <class Record>
Fields fieldsOf(const Record& record, unsigned elements)
{
    Fields fields;
    listMembers(record, "", fields);
    if constexpr (requires { record.Message; }) {
        listCharacters(record.Message, std::min(record.Message_Length + 0U, 90U), "Message",
                       fields);
    }
    if constexpr (requires { record.Data_Length; }) {
        listCharacters(record.Data, std::min(record.Data_Length + 0U, 93U), "Data", fields);
    }
    if constexpr (requires { record.Antenna_Descriptor; }) {
        listCharacters(record.Antenna_Descriptor, std::min(record.NAD + 0U, 31U),
                       "Antenna_Descriptor", fields);
        listCharacters(record.Antenna_Serial_Number,
                       record.Serial_Flag == 1 ? std::min(record.NAS + 0U, 31U) : 0,
                       "Antenna_Serial_Number", fields);
    }
    if constexpr (requires { record.Ns; }) {
        const std::string name = requires
        {
            record.Corrections;
        }
        ? "Corrections." : "Data.";
        for (unsigned i = 0; i < std::min(record.Ns + 0U, elements); ++i) {
            const std::string prefix = name + std::to_string(i) + ".";
            listMembers(arrayOf(record)[i], prefix, fields);
            fields[prefix + "has_parent"] = arrayOf(record)[i].parent == &record;
        }
    }
    return fields;
}

template <class Record>
unsigned countOf(const Record& record)
{
    if constexpr (requires { record.Ns; }) {
        return record.Ns;
    } else {
        return 0;
    }
}

#define MAIN_KIND(N)                                                                               \
    MainKind                                                                                       \
    {                                                                                              \
        N, RTCM2_MESSAGE_TYPE_##N,                                                                 \
            [](RTCM2_message_s& m) { return RTCM2_init_Message_Type_##N(&m.Message_Type_##N); },   \
            [](RTCM2_message_s& m, std::uint32_t& offset, const std::uint8_t* data,                \
               std::uint16_t size, void* parent, std::uint32_t declaredLength) {                   \
                return rtcm2::layouts::decode_Message_Type_##N(&m.Message_Type_##N, &offset, data, \
                                                               size, parent, declaredLength);      \
            },                                                                                     \
            [](RTCM2_message_s& m, std::uint8_t* data, std::uint16_t size,                         \
               std::uint32_t& offset) {                                                            \
                return rtcm2::layouts::encode_Message_Type_##N(&m.Message_Type_##N, data, size,    \
                                                               &offset);                           \
            },                                                                                     \
            [](RTCM2_message_s& m, std::uint8_t* data, std::uint16_t size) {                       \
                return RTCM2_encode_Message_Type_##N(data, size, &m.Message_Type_##N);             \
            },                                                                                     \
            [](RTCM2_message_s& m) {                                                               \
                RTCM2_free_Message_Type_##N##_children(&m.Message_Type_##N);                       \
            },                                                                                     \
            [](const RTCM2_message_s& m, unsigned elements) {                                      \
                return fieldsOf(m.Message_Type_##N, elements);                                     \
            },                                                                                     \
            [](const RTCM2_message_s& m) {                                                         \
                return static_cast<const void*>(arrayOf(m.Message_Type_##N));                      \
            },                                                                                     \
            [](const RTCM2_message_s& m) { return countOf(m.Message_Type_##N); }                   \
    }

}    // namespace

std::string MainKind::name() const
{
    return std::string(RTCM2_message_enum_to_string(kind)).substr(std::strlen("RTCM2_"));
}

const std::vector<MainKind>& mainKinds()
{
    static const std::vector<MainKind> kinds{
        MAIN_KIND(3),  MAIN_KIND(16), MAIN_KIND(22), MAIN_KIND(23), MAIN_KIND(24), MAIN_KIND(32),
        MAIN_KIND(59), MAIN_KIND(1),  MAIN_KIND(9),  MAIN_KIND(15), MAIN_KIND(18), MAIN_KIND(19),
        MAIN_KIND(20), MAIN_KIND(21), MAIN_KIND(31), MAIN_KIND(38), MAIN_KIND(39), MAIN_KIND(40),
        MAIN_KIND(44), MAIN_KIND(46), MAIN_KIND(47), MAIN_KIND(48), MAIN_KIND(49), MAIN_KIND(50),
        MAIN_KIND(51), MAIN_KIND(52)};
    return kinds;
}

const MainKind& mainKind(int type)
{
    for (const MainKind& kind : mainKinds()) {
        if (kind.type == type) {
            return kind;
        }
    }
    throw std::out_of_range("no main kind of type " + std::to_string(type));
}

TestMessage::TestMessage(const MainKind& kind) : m_kind(kind)
{
    std::memset(static_cast<void*>(&message), 0x2A, sizeof message);
    kind.init(message);
}

TestMessage::~TestMessage()
{
    m_kind.release(message);
}

std::int32_t TestMessage::decode(std::uint32_t& offset, const std::uint8_t* data,
                                 std::uint16_t size, std::uint32_t declaredLength)
{
    return m_kind.decode(message, offset, data, size, nullptr, declaredLength);
}
