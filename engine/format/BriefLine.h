// What a line about a message has: when and by whom it was sent, its type, and what is in it.
#pragma once

#include "format/BriefPlan.h"

#include <cstdint>
#include <optional>
#include <span>

// Planned once for each kind, also for the unknown one.
class BriefLine {
public:
    BriefLine() = default;
    // With `all`, fields that mean nothing with the system of the message are told, too.
    BriefLine(const KindModel& kind, bool all);

    // Milliseconds of the hour, decimals behind them dropped; nothing where the message tells none.
    std::optional<std::uint64_t> time(const void* record) const;
    std::optional<std::uint64_t> station(const void* record) const { return of(sender, record); }
    std::optional<std::uint64_t> type(const void* record) const { return of(typeField, record); }

    // Appends the content. Gives the number of bytes at its begin that tell a health which is not
    // the usual one.
    std::size_t appendContent(Text& text, const void* record,
                              std::span<const std::uint8_t> packed) const;

private:
    static std::optional<std::uint64_t> of(const FieldModel* field, const void* record);

    const FieldModel* seconds = nullptr;
    const FieldModel* sender = nullptr;
    const FieldModel* typeField = nullptr;
    const FieldModel* health = nullptr;
    bool isUnknown = false;
    BriefPlan content{};
};

// Appends minutes and seconds of the hour, "30:07.8".
void appendClock(Text& text, std::uint64_t milliseconds);
