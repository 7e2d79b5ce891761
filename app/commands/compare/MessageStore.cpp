#include "commands/compare/MessageStore.h"

#include "framing/Header.h"

#include <algorithm>

namespace {

std::uint8_t systemOf(const Found& found)
{
    const bool isKnown = found.hasRecord() && !found.kind->isUnknown;
    return static_cast<std::uint8_t>(isKnown ? MessageSystem(*found.kind).of(found.record)
                                             : static_cast<std::uint32_t>(RTCM2_system_count()));
}

bool isGood(const Found& found)
{
    return found.what != Found::What::damaged && found.what != Found::What::truncated &&
           found.bytes.size() >= framing::headerBytes;
}

}    // namespace

void MessageStore::add(const Found& found)
{
    if (!isGood(found)) {
        return;
    }
    const auto bytes = found.bytes.first(std::min<std::size_t>(found.bytes.size(), UINT8_MAX));
    if (used + bytes.size() > sizeof(Block)) {
        blocks.push_back(std::make_unique_for_overwrite<Block>());
        used = 0;
    }
    std::copy(bytes.begin(), bytes.end(),
              blocks.back()->begin() + static_cast<std::ptrdiff_t>(used));
    const framing::Header header = framing::headerOf(bytes);
    messages.push_back({.number = found.number,
                        .byte = found.begin,
                        .block = static_cast<std::uint32_t>(blocks.size() - 1),
                        .place = static_cast<std::uint16_t>(used),
                        .size = static_cast<std::uint8_t>(bytes.size()),
                        .sequence = static_cast<std::uint8_t>(header.sequence),
                        .group = {.station = static_cast<std::uint16_t>(header.station),
                                  .system = systemOf(found),
                                  .type = static_cast<std::uint8_t>(header.type)},
                        .time = static_cast<std::uint16_t>(header.zCount)});
    used += bytes.size();
}

std::string_view MessageStore::textOf(std::size_t index) const
{
    const auto bytes = bytesOf(messages[index]);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}
