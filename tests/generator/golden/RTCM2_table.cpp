// Rendered by generator/render.py from schema through RTCM2_table.cpp.j2. Do not edit.
#include "RTCM2_layouts.h"
#include "table.h"

#include <cstddef>

using namespace rtcm2;

// Rows leave out what their members do not have.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#endif

namespace {

const RTCM2_text_s texts_Buoy_Look[] = {{0, "Dark \"D\""}, {1, "Red"}};
const RTCM2_text_s texts_Buoy_Height[] = {{-256, "Unknown"}};
const RTCM2_choice_s choices_Harbour_Reach[] = {{0, 0.5}, {1, 2}};
const std::int64_t presence_Harbour_Channel[] = {1, 2};

extern const RTCM2_kind_s kindTable[3];

const RTCM2_member_s members_Buoy[4] = {
    {.name = "Look", .display = "Look", .unit = "", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_BYTE, .bits = 7, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Buoy_s, Look), .first_bit = 0, .texts = texts_Buoy_Look, .text_count = 2},
    {.name = "Colour", .display = "Colour", .unit = "", .role = RTCM2_ROLE_SLICE, .type = RTCM2_TYPE_UNSIGNED, .bits = 4, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Buoy_s, Colour), .first_bit = 1, .of = &members_Buoy[0], .low = 2, .times = 1, .minus = 0, .over = 1, .has_initial = 1},
    {.name = "Height", .display = "Height", .unit = "metre", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_SIGNED, .bits = 9, .size = sizeof(int16_t), .offset = offsetof(RTCM2_Buoy_s, Height), .first_bit = 7, .texts = texts_Buoy_Height, .text_count = 1, .has_do_not_use = 1, .do_not_use = -256},
    {.name = "Chart", .display = "Chart", .unit = "", .role = RTCM2_ROLE_CONSTANT, .type = RTCM2_TYPE_UNSIGNED, .bits = 8, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Buoy_s, Chart), .first_bit = -1, .has_initial = 1},
};

const RTCM2_member_s members_Harbour[11] = {
    {.name = "Preamble", .display = "Preamble", .unit = "", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_BYTE, .bits = 8, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Harbour_s, Preamble), .first_bit = 0, .has_initial = 1, .initial = 102},
    {.name = "Message_Type", .display = "Message Type", .unit = "", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_UNSIGNED, .bits = 6, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Harbour_s, Message_Type), .first_bit = 8, .has_initial = 1, .initial = 5},
    {.name = "Station_", .display = "Station", .unit = "", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_UNSIGNED, .bits = 34, .size = sizeof(uint64_t), .offset = offsetof(RTCM2_Harbour_s, Station_), .first_bit = 14},
    {.name = "Pilot", .display = "Pilot", .unit = "", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_BYTE, .bits = 3, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Harbour_s, Pilot), .first_bit = 48},
    {.name = "Reach", .display = "Reach", .unit = "", .role = RTCM2_ROLE_LOOKUP, .type = RTCM2_TYPE_REAL, .bits = 64, .size = sizeof(double), .offset = offsetof(RTCM2_Harbour_s, Reach), .first_bit = -1, .of = &members_Harbour[3], .low = 0, .times = 1, .minus = 0, .over = 1, .choices = choices_Harbour_Reach, .choice_count = 2, .has_initial = 1},
    {.name = "Channel", .display = "Channel", .unit = "MHz", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_UNSIGNED, .bits = 8, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Harbour_s, Channel), .first_bit = 51, .when = &members_Harbour[3], .when_values = presence_Harbour_Channel, .when_count = 2},
    {.name = "Length", .display = "Length", .unit = "", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_UNSIGNED, .bits = 5, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Harbour_s, Length), .first_bit = -1, .has_initial = 1},
    {.name = "Title", .display = "Title", .unit = "", .role = RTCM2_ROLE_RUN, .type = RTCM2_TYPE_CHARACTER, .bits = 8, .size = sizeof(RTCM2_char), .offset = offsetof(RTCM2_Harbour_s, Title), .first_bit = -1, .when = &members_Harbour[3], .when_values = presence_Harbour_Channel, .when_count = 2, .length = &members_Harbour[6], .limit = 31},
    {.name = "Note", .display = "Note", .unit = "", .role = RTCM2_ROLE_RUN, .type = RTCM2_TYPE_BYTE, .bits = 8, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Harbour_s, Note), .first_bit = -1, .length = &members_Harbour[6], .limit = 9},
    {.name = "Nb", .display = "Nb", .unit = "", .role = RTCM2_ROLE_COUNT, .type = RTCM2_TYPE_UNSIGNED, .bits = 16, .size = sizeof(uint16_t), .offset = offsetof(RTCM2_Harbour_s, Nb), .first_bit = -1, .of = &members_Harbour[6], .low = 0, .times = 24, .minus = 3, .over = 16, .has_initial = 1},
    {.name = "Buoys", .display = "Buoys", .unit = "", .role = RTCM2_ROLE_ARRAY, .type = RTCM2_TYPE_RECORD, .bits = 0, .size = 0, .offset = offsetof(RTCM2_Harbour_s, Buoys), .first_bit = -1, .length = &members_Harbour[9], .limit = 0, .elements = &kindTable[0]},
};

const RTCM2_member_s members_Tide[4] = {
    {.name = "Preamble", .display = "", .unit = "", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_BYTE, .bits = 8, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Tide_s, Preamble), .first_bit = 0, .has_initial = 1, .initial = 102},
    {.name = "Message_Type", .display = "", .unit = "", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_UNSIGNED, .bits = 6, .size = sizeof(uint8_t), .offset = offsetof(RTCM2_Tide_s, Message_Type), .first_bit = 8, .has_initial = 1, .initial = 6},
    {.name = "Station_", .display = "", .unit = "", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_UNSIGNED, .bits = 34, .size = sizeof(uint64_t), .offset = offsetof(RTCM2_Tide_s, Station_), .first_bit = 14},
    {.name = "Level", .display = "", .unit = "", .role = RTCM2_ROLE_WIRE, .type = RTCM2_TYPE_SIGNED, .bits = 40, .size = sizeof(int64_t), .offset = offsetof(RTCM2_Tide_s, Level), .first_bit = 48},
};

const RTCM2_kind_s kindTable[3] = {
    {.name = "Buoy", .constant = "RTCM2_BUOY", .display = "Buoy", .text = "", .family = "Harbours",
     .kind = RTCM2_BUOY, .type = -1, .size = sizeof(RTCM2_Buoy_s), .bits = 16,
     .members = members_Buoy, .member_count = 4},
    {.name = "Harbour", .constant = "RTCM2_HARBOUR", .display = "Harbour", .text = "Harbour and its buoys", .family = "Harbours",
     .kind = RTCM2_HARBOUR, .type = 5, .size = sizeof(RTCM2_Harbour_s), .bits = 0,
     .members = members_Harbour, .member_count = 11, .array = &members_Harbour[10]},
    {.name = "Tide", .constant = "RTCM2_TIDE", .display = "", .text = "", .family = "Harbours",
     .kind = RTCM2_TIDE, .type = 6, .size = sizeof(RTCM2_Tide_s), .bits = 88,
     .members = members_Tide, .member_count = 4},
};

const char* const errorTable[] = {
    "RTCM2_ERR_INVALID_CRC",
    "RTCM2_ERR_BUOY_LOOK_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_BUOY_HEIGHT_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_BUOY_HEIGHT_SIZE_UNDERFLOW",
    "RTCM2_ERR_BUOY_INTERNAL",
    "RTCM2_ERR_HARBOUR_PREAMBLE_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_HARBOUR_MESSAGE_TYPE_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_HARBOUR_STATION_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_HARBOUR_PILOT_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_HARBOUR_CHANNEL_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_HARBOUR_LENGTH_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_HARBOUR_TITLE_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_HARBOUR_TITLE_INT_BUFFER_OVERFLOW",
    "RTCM2_ERR_HARBOUR_NOTE_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_HARBOUR_NOTE_INT_BUFFER_OVERFLOW",
    "RTCM2_ERR_HARBOUR_BUOYS_SIZE_UNDERFLOW",
    "RTCM2_ERR_HARBOUR_INTERNAL",
    "RTCM2_ERR_TIDE_PREAMBLE_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_TIDE_MESSAGE_TYPE_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_TIDE_STATION_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_TIDE_LEVEL_EXT_BUFFER_OVERFLOW",
    "RTCM2_ERR_TIDE_LEVEL_SIZE_UNDERFLOW",
    "RTCM2_ERR_TIDE_INTERNAL",
    "RTCM2_ERR_HARBOUR_DISABLED",
    "RTCM2_ERR_TIDE_DISABLED",
    "RTCM2_ERR_INVALID_MESSAGE",
    "RTCM2_ERR_EOF",
};

constexpr KindFunctions functionTable[] = {
    typedFunctions<RTCM2_Buoy_s, RTCM2_init_Buoy, layouts::decode_Buoy, layouts::encode_Buoy>(),
    typedFunctions<RTCM2_Harbour_s, RTCM2_init_Harbour, layouts::decode_Harbour, layouts::encode_Harbour>(),
    typedFunctions<RTCM2_Tide_s, RTCM2_init_Tide, layouts::decode_Tide, layouts::encode_Tide>(),
};

}    // namespace

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

constinit const std::span<const RTCM2_kind_s> rtcm2::kindRows = kindTable;
constinit const std::span<const char* const> rtcm2::errorNames = errorTable;
constinit const std::span<const KindFunctions> rtcm2::kindFunctions = functionTable;
