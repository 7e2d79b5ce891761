// What integers mean: quantities, and the systems that satellites belong to.
#include "RTCM2_reader.h"
#include "record_values.h"
#include "table.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>

using namespace rtcm2;

namespace {

const RTCM2_system_s* systemOfValue(std::int64_t value)
{
    const auto found = std::find_if(systemRows.begin(), systemRows.end(),
                                    [value](const auto& system) { return system.value == value; });
    return found != systemRows.end() ? &*found : nullptr;
}

bool isMemberOf(const RTCM2_kind_s& kind, const RTCM2_member_s* member)
{
    const auto members = membersOf(kind);
    return !std::less<>()(member, members.data()) &&
           std::less<>()(member, members.data() + members.size());
}

// The record that the member which tells the kind's system belongs to; null when there is none.
const void* holderOf(const RTCM2_kind_s& kind, const void* record)
{
    if (kind.system_member == nullptr) {
        return nullptr;
    }
    if (isMemberOf(kind, kind.system_member)) {
        return isPresent(record, *kind.system_member) ? record : nullptr;
    }
    return RTCM2_element(record, kind.array, 0);
}

// A text that is put together from its end, and has a NUL there.
class Backwards {
public:
    void put(char character) { figures[--begin] = character; }
    // The last digit of a number, which loses it.
    void putDigitOf(std::uint64_t& number)
    {
        put(static_cast<char>('0' + number % 10));
        number /= 10;
    }
    // Copies all that there may be, since a constant length takes no call.
    std::uint32_t copyTo(char* text) const
    {
        std::memcpy(text, &figures[begin], RTCM2_QUANTITY_ROOM);
        return end - begin;
    }

private:
    static constexpr std::uint32_t end = RTCM2_QUANTITY_ROOM - 1;

    std::array<char, std::size_t{2} * RTCM2_QUANTITY_ROOM> figures{};
    std::uint32_t begin = end;
};

void putDecimal(Backwards& text, const RTCM2_decimal_s& value)
{
    const bool isNegative = value.digits < 0;
    std::uint64_t digits = static_cast<std::uint64_t>(value.digits);
    digits = isNegative ? 0 - digits : digits;
    unsigned decimals = value.decimals;
    for (; decimals > 0 && digits % 10 == 0; --decimals) {
        digits /= 10;
    }
    if (decimals > 0) {
        for (; decimals > 0; --decimals) {
            text.putDigitOf(digits);
        }
        text.put('.');
    }
    do {
        text.putDigitOf(digits);
    } while (digits > 0);
    if (isNegative) {
        text.put('-');
    }
}

// At least two digits behind the letter of the system.
void putSatellite(Backwards& text, const RTCM2_system_s* system, std::int64_t number)
{
    auto digits = static_cast<std::uint64_t>(number);
    text.putDigitOf(digits);
    do {
        text.putDigitOf(digits);
    } while (digits > 0);
    if (system != nullptr) {
        text.put(*system->letter);
    }
}

}    // namespace

int32_t RTCM2_system_count(void)
{
    return static_cast<int32_t>(systemRows.size());
}

const RTCM2_system_s* RTCM2_system(int32_t index)
{
    const auto place = static_cast<std::size_t>(index);
    return place < systemRows.size() ? &systemRows[place] : nullptr;
}

const RTCM2_system_s* RTCM2_system_of(const void* record)
{
    const RTCM2_kind_s* const kind = RTCM2_kind_of(record);
    if (kind == nullptr) {
        return nullptr;
    }
    if (const void* const holder = holderOf(*kind, record)) {
        return systemOfValue(integerOf(holder, *kind->system_member));
    }
    const void* const parent = headOf(record).parent;
    const bool isPart = kind->type < 0 && kind->system_member == nullptr && parent != nullptr;
    return isPart ? RTCM2_system_of(parent) : kind->system;
}

int32_t RTCM2_read_quantity(const void* record, const RTCM2_member_s* member,
                            RTCM2_decimal_s* value)
{
    if (member->quantity == nullptr) {
        return RTCM2_ACCESS_TYPE;
    }
    if (!isPresent(record, *member)) {
        return RTCM2_ACCESS_ABSENT;
    }
    RTCM2_quantity_reader_s reader;
    RTCM2_compile_quantity(member, &reader);
    return RTCM2_reader_quantity(&reader, record, value);
}

int32_t RTCM2_read_quantity_text(const void* record, const RTCM2_member_s* member, char* text,
                                 uint32_t room)
{
    RTCM2_decimal_s value{};
    const int32_t answer = RTCM2_read_quantity(record, member, &value);
    if (answer != RTCM2_ACCESS_DONE) {
        return answer;
    }
    char all[RTCM2_QUANTITY_ROOM];
    const std::uint32_t size =
        RTCM2_quantity_text(member->quantity, RTCM2_system_of(record), &value, all) + 1;
    if (size > room) {
        return RTCM2_ACCESS_RANGE;
    }
    std::copy_n(all, size, text);
    return RTCM2_ACCESS_DONE;
}

uint32_t RTCM2_quantity_text(const RTCM2_quantity_s* quantity, const RTCM2_system_s* system,
                             const RTCM2_decimal_s* value, char* text)
{
    Backwards figures;
    if (quantity->is_satellite != 0) {
        putSatellite(figures, system, value->digits);
    } else {
        putDecimal(figures, *value);
    }
    return figures.copyTo(text);
}
