// The panes of the viewer: which bits belong to which field, what is shown of each, and that
// choosing one side finds the other.
#include "framing/RTCM2_framing.h"
#include "plugin/Plugin.h"
#include "support/SlowBits.h"
#include "viewer/panes/BitMap.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>
#include <set>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Places = std::set<FieldPlace>;
using Values = std::map<FieldPlace, std::vector<double>>;

const FormatModel& format()
{
    static const FormatModel model(plugin::format());
    return model;
}

// Decoded through the table; without a record where the content does not fit.
MessageDetail detailOf(const KindModel& kind, const Bytes& packed)
{
    MessageDetail detail;
    detail.kind = &kind;
    detail.packed = packed;
    detail.table = std::make_unique<TableRecord>();
    const std::int32_t bits = detail.table->decode(*kind.row, packed);
    detail.record = bits >= 0 ? detail.table->get() : nullptr;
    detail.bits = static_cast<std::size_t>(std::max(bits, 0));
    return detail;
}

// Messages of all kinds: those of a sample, and others with random content.
std::vector<MessageDetail> messages()
{
    std::vector<MessageDetail> all;
    std::ifstream file(RTCM2_TEST_SAMPLES "/all-types.packed", std::ios::binary);
    const Bytes sample{std::istreambuf_iterator<char>(file), {}};
    std::mt19937 random(1);
    for (std::size_t at = 0; at < sample.size();) {
        const auto size = static_cast<std::size_t>(
            RTCM2_packed_length(&sample[at], static_cast<std::uint16_t>(sample.size() - at)));
        Bytes packed(&sample[at], &sample[at] + size);
        at += size;
        RTCM2_framing_header_s header{};
        RTCM2_read_header(packed.data(), packed.size(), &header);
        const KindModel* const kind =
            format().modelOf(RTCM2_kind_of_type(static_cast<std::int32_t>(header.type)));
        for (int pass = 0; kind != nullptr && pass < 4; ++pass) {
            all.push_back(detailOf(*kind, packed));
            std::generate(packed.begin() + 6, packed.end(), std::ref(random));
        }
    }
    return all;
}

Values valuesOf(const MessageDetail& detail)
{
    Values values;
    eachPlace(detail, [&](const FieldPlace& place, const FieldSpot& spot) {
        const bool isValue = spot.field != nullptr && spot.field->element == nullptr;
        for (std::uint32_t i = 0; isValue && i < RTCM2_count(spot.record, spot.field->row); ++i) {
            double& value = values[place].emplace_back();
            RTCM2_read_real(spot.record, spot.field->row, i, &value);
        }
    });
    return values;
}

// Whether other fields or their number depend on the field's value.
bool shapesTheMessage(const FieldSpot& spot)
{
    return std::any_of(spot.kind->fields.begin(), spot.kind->fields.end(), [&](const auto& other) {
        return other.row->when == spot.field->row || other.row->length == spot.field->row;
    });
}

void checkFlip(const MessageDetail& detail, const Values& before, const BitMap& map,
               std::uint32_t bit)
{
    Bytes packed = detail.packed;
    slow::setBit(packed, bit, !slow::bit(packed, bit));
    const MessageDetail flipped = detailOf(*detail.kind, packed);
    Places lit, shaping;
    for (const auto& [place, values] : before) {
        const FieldSpot spot = spotOf(detail, place);
        if (map.bitsOf(place).holds(bit)) {
            (shapesTheMessage(spot) ? shaping : lit).insert(place);
        }
    }
    EXPECT_EQ(map.at(bit).isNone(), lit.empty() && shaping.empty());
    EXPECT_EQ(map.isFill(bit), bit >= detail.bits);
    if (flipped.record == nullptr) {
        EXPECT_FALSE(shaping.empty());
        return;
    }
    const Values after = valuesOf(flipped);
    EXPECT_TRUE(lit.empty() || before.at(map.at(bit)) != after.at(map.at(bit)));
    for (const auto& [place, values] : before) {
        const auto now = after.find(place);
        const bool hasChanged = now == after.end() || now->second != values;
        const std::uint32_t element = map.bitsOf({place.field, place.element}).first;
        const bool mayMove = !shaping.empty() && std::max(element, map.bitsOf(place).first) > bit;
        EXPECT_TRUE(!hasChanged || lit.contains(place) || shaping.contains(place) || mayMove)
            << spotOf(detail, place).field->name;
    }
}

TEST(ViewerBitMap, AFlippedBitChangesTheFieldsThatHaveItAndNoOther)
{
    Places kinds;
    for (const MessageDetail& detail : messages()) {
        SCOPED_TRACE(detail.kind->name);
        const Values before = valuesOf(detail);
        const BitMap map(detail);
        ASSERT_EQ(map.size(), 8 * detail.packed.size());
        for (std::uint32_t bit = 0; detail.record != nullptr && bit < map.size(); ++bit) {
            SCOPED_TRACE(bit);
            checkFlip(detail, before, map, bit);
        }
        kinds.insert({detail.record != nullptr ? detail.kind->typeNumber : -1});
    }
    const auto reported = std::count_if(format().kinds().begin(), format().kinds().end(),
                                        [](auto& kind) { return kind->isMain && kind->info; });
    EXPECT_GE(kinds.size(), static_cast<std::size_t>(reported));
}

}    // namespace
