// Rendered by generator/render.py from schema through RTCM2_members.cpp.j2. Do not edit.
#include "RTCM2_members.h"

#include "codec_support.h"

#include <cstddef>

namespace rtcm2 {
namespace {

constexpr MemberRow members_Buoy[] = {
    {.name = "Look",
     .role = MemberRole::wire,
     .type = MemberType::unsignedInteger,
     .bits = 7,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Buoy_s, Look)},
    {.name = "Colour",
     .role = MemberRole::slice,
     .type = MemberType::unsignedInteger,
     .bits = 4,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Buoy_s, Colour),
     .of = 0,
     .low = 2,
     .derive = [](void* record) {
         auto& r = *static_cast<RTCM2_Buoy_s*>(record);
         r.Colour = sliceOf<2, 4>(r.Look);
     }},
    {.name = "Height",
     .role = MemberRole::wire,
     .type = MemberType::signedInteger,
     .bits = 9,
     .size = sizeof(int16_t),
     .offset = offsetof(RTCM2_Buoy_s, Height)},
    {.name = "Chart",
     .role = MemberRole::constant,
     .type = MemberType::unsignedInteger,
     .bits = 8,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Buoy_s, Chart)},
};

constexpr MemberRow members_Harbour[] = {
    {.name = "Preamble",
     .role = MemberRole::wire,
     .type = MemberType::unsignedInteger,
     .bits = 8,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Harbour_s, Preamble)},
    {.name = "Message Type",
     .role = MemberRole::wire,
     .type = MemberType::unsignedInteger,
     .bits = 6,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Harbour_s, Message_Type)},
    {.name = "Station",
     .role = MemberRole::wire,
     .type = MemberType::unsignedInteger,
     .bits = 34,
     .size = sizeof(uint64_t),
     .offset = offsetof(RTCM2_Harbour_s, Station_)},
    {.name = "Pilot",
     .role = MemberRole::wire,
     .type = MemberType::unsignedInteger,
     .bits = 3,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Harbour_s, Pilot)},
    {.name = "Reach",
     .role = MemberRole::lookup,
     .type = MemberType::real,
     .bits = 64,
     .size = sizeof(double),
     .offset = offsetof(RTCM2_Harbour_s, Reach),
     .of = 3,
     .derive = [](void* record) {
         auto& r = *static_cast<RTCM2_Harbour_s*>(record);
         r.Reach = r.Pilot == 0 ? 0.5 : r.Pilot == 1 ? 2 : r.Reach;
     }},
    {.name = "Channel",
     .role = MemberRole::wire,
     .type = MemberType::unsignedInteger,
     .bits = 8,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Harbour_s, Channel),
     .when = 3,
     .isPresent = [](const void* record) {
         const auto& r = *static_cast<const RTCM2_Harbour_s*>(record);
         return r.Pilot == 1 || r.Pilot == 2;
     }},
    {.name = "Length",
     .role = MemberRole::wire,
     .type = MemberType::unsignedInteger,
     .bits = 5,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Harbour_s, Length)},
    {.name = "Title",
     .role = MemberRole::run,
     .type = MemberType::character,
     .bits = 8,
     .size = sizeof(char),
     .offset = offsetof(RTCM2_Harbour_s, Title),
     .length = 6,
     .limit = 31,
     .when = 3,
     .isPresent = [](const void* record) {
         const auto& r = *static_cast<const RTCM2_Harbour_s*>(record);
         return r.Pilot == 1 || r.Pilot == 2;
     }},
    {.name = "Note",
     .role = MemberRole::run,
     .type = MemberType::unsignedInteger,
     .bits = 8,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Harbour_s, Note),
     .length = 6,
     .limit = 9},
    {.name = "Nb",
     .role = MemberRole::count,
     .type = MemberType::unsignedInteger,
     .bits = 16,
     .size = sizeof(uint16_t),
     .offset = offsetof(RTCM2_Harbour_s, Nb),
     .of = 6,
     .derive = [](void* record) {
         auto& r = *static_cast<RTCM2_Harbour_s*>(record);
         r.Nb = countOf<uint16_t, 24, 3, 16>(r.Length);
     }},
    {.name = "Buoys",
     .role = MemberRole::records,
     .type = MemberType::record,
     .offset = offsetof(RTCM2_Harbour_s, Buoys),
     .length = 9,
     .element = RTCM2_BUOY},
};

constexpr MemberRow members_Tide[] = {
    {.name = "Preamble",
     .role = MemberRole::wire,
     .type = MemberType::unsignedInteger,
     .bits = 8,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Tide_s, Preamble)},
    {.name = "Message_Type",
     .role = MemberRole::wire,
     .type = MemberType::unsignedInteger,
     .bits = 6,
     .size = sizeof(uint8_t),
     .offset = offsetof(RTCM2_Tide_s, Message_Type)},
    {.name = "Station_",
     .role = MemberRole::wire,
     .type = MemberType::unsignedInteger,
     .bits = 34,
     .size = sizeof(uint64_t),
     .offset = offsetof(RTCM2_Tide_s, Station_)},
    {.name = "Level",
     .role = MemberRole::wire,
     .type = MemberType::signedInteger,
     .bits = 40,
     .size = sizeof(int64_t),
     .offset = offsetof(RTCM2_Tide_s, Level)},
};

constexpr KindRow kinds[] = {
    {},
    {.name = "Buoy",
     .kind = RTCM2_BUOY,
     .isMain = false,
     .size = sizeof(RTCM2_Buoy_s),
     .members = members_Buoy,
     .init = [](void* record) { RTCM2_init_Buoy(static_cast<RTCM2_Buoy_s*>(record)); },
     .release = [](void* record) { RTCM2_free_Buoy_children(static_cast<RTCM2_Buoy_s*>(record)); }},
    {.name = "Harbour",
     .kind = RTCM2_HARBOUR,
     .isMain = true,
     .size = sizeof(RTCM2_Harbour_s),
     .members = members_Harbour,
     .init = [](void* record) { RTCM2_init_Harbour(static_cast<RTCM2_Harbour_s*>(record)); },
     .release = [](void* record) { RTCM2_free_Harbour_children(static_cast<RTCM2_Harbour_s*>(record)); },
     .encode = [](std::uint8_t* data, std::uint16_t size, void* record) {
         return RTCM2_encode_Harbour(data, size, static_cast<RTCM2_Harbour_s*>(record));
     },
     .append = [](void* record) -> void* {
         return RTCM2_append_Harbour_Buoys(static_cast<RTCM2_Harbour_s*>(record));
     }},
    {.name = "Tide",
     .kind = RTCM2_TIDE,
     .isMain = true,
     .size = sizeof(RTCM2_Tide_s),
     .members = members_Tide,
     .init = [](void* record) { RTCM2_init_Tide(static_cast<RTCM2_Tide_s*>(record)); },
     .release = [](void* record) { RTCM2_free_Tide_children(static_cast<RTCM2_Tide_s*>(record)); },
     .encode = [](std::uint8_t* data, std::uint16_t size, void* record) {
         return RTCM2_encode_Tide(data, size, static_cast<RTCM2_Tide_s*>(record));
     }},
};

}    // namespace

std::span<const KindRow> kindRows()
{
    return kinds;
}

}    // namespace rtcm2
