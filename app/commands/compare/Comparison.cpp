#include "commands/compare/Comparison.h"

#include "commands/compare/Alignment.h"
#include "format/FieldText.h"
#include "framing/Header.h"

#include <limits>
#include <set>

namespace {

std::string rawText(const FieldModel& field, const void* record)
{
    Text text;
    if (field.element != nullptr) {
        appendInterpreted(text, field, record, false);
    } else {
        appendRaw(text, field, record);
    }
    return std::string(text.view());
}

ShownValue shownValue(const KindModel& holder, const FieldModel& field, const void* record)
{
    ShownValue shown{.raw = rawText(field, record), .quantity = {}};
    if (const FieldModel* const quantity = holder.quantityOf(field)) {
        Text text;
        appendInterpreted(text, *quantity, record, true);
        shown.quantity = text.view();
    }
    return shown;
}

Comparison::FieldKey keyOf(unsigned type, const FieldPath& path)
{
    return {type, path.field->index, path.part != nullptr ? path.part->index : -1, path.name()};
}

Comparison::FieldKey keyOfRest(unsigned type)
{
    return {type, std::numeric_limits<int>::max(), -1, ""};
}

}    // namespace

Comparison::Comparison(const FormatModel& model, const MessageStore& first,
                       const MessageStore& second)
    : formatModel(model), a(first), b(second), satelliteDifferences(model)
{
    const Alignment alignment(a, b);
    lonely = {alignment.onlyA(), alignment.onlyB()};
    for (const MessagePair& pair : alignment.pairs()) {
        compare(pair.a, pair.b, pair.isSame);
    }
    satelliteDifferences.finish();
}

// Messages that only have the time in common are compared in their satellites alone.
void Comparison::compare(std::uint32_t inA, std::uint32_t inB, bool isSameMessage)
{
    const bool isEqual = isSameMessage && a.textOf(inA) == b.textOf(inB);
    equalCount += isEqual ? 1U : 0U;
    differingCount += isSameMessage && !isEqual ? 1U : 0U;
    const bool hasSatellites = satelliteDifferences.planOf(a[inA].group.type) != nullptr;
    if (isEqual && !hasSatellites) {
        return;
    }
    const KindModel* const kind = decodeBoth(inA, inB);
    if (isSameMessage && !isEqual) {
        countFields(inA, inB, kind);
    }
    if (hasSatellites && kind != nullptr) {
        satelliteDifferences.add(a[inA], recordA.get(), recordB.get());
    }
}

// The kind of both; null where one of them is not what its type says. Of messages of unknown type
// the headers are decoded.
const KindModel* Comparison::decodeBoth(std::uint32_t inA, std::uint32_t inB)
{
    const KindModel* const known = formatModel.modelOf(RTCM2_kind_of_type(a[inA].group.type));
    const KindModel& kind = known != nullptr ? *known : formatModel.unknownKind();
    const auto decode = [&](TableRecord& record, std::span<const std::uint8_t> bytes) {
        return record.decode(*kind.row,
                             kind.isUnknown ? bytes.first(framing::headerBytes) : bytes) >= 0 ||
               kind.isUnknown;
    };
    const bool isDecoded = decode(recordA, a.bytesOf(a[inA])) && decode(recordB, b.bytesOf(b[inB]));
    return isDecoded ? &kind : nullptr;
}

void Comparison::countFields(std::uint32_t inA, std::uint32_t inB, const KindModel* kind)
{
    const unsigned type = a[inA].group.type;
    std::set<FieldKey> keys;    // each once a message
    if (kind != nullptr) {
        eachDifference(*kind, recordA.get(), recordB.get(), [&](const FieldDifference& difference) {
            keepFirst(inA, inB, kind, &difference);
            keys.insert(keyOf(type, difference.path));
        });
    }
    if (keys.empty()) {
        keepFirst(inA, inB, nullptr, nullptr);
        keys.insert(keyOfRest(type));
    }
    for (const FieldKey& key : keys) {
        ++fieldCounts[key];
    }
}

void Comparison::keepFirst(std::uint32_t inA, std::uint32_t inB, const KindModel* kind,
                           const FieldDifference* difference)
{
    if (firstFound && firstFound->a <= inA) {
        return;
    }
    FirstDifference& first = firstFound.emplace();
    first.a = inA;
    first.b = inB;
    if (difference != nullptr) {
        const FieldPath& path = difference->path;
        const KindModel& holder = path.part != nullptr ? *path.field->element : *kind;
        first.field = path.name();
        first.element = difference->element;
        first.values = {shownValue(holder, path.last(), difference->a),
                        shownValue(holder, path.last(), difference->b)};
    }
}

std::string Comparison::secondOf(const MessageStore& of, std::uint32_t index) const
{
    const KindModel& kind = formatModel.unknownKind();
    const FieldModel* const time = kind.field(RTCM2_MEANS_TIME);
    const FieldModel* const second = time != nullptr ? kind.quantityOf(*time) : nullptr;
    TableRecord header;
    header.decode(*kind.row, of.bytesOf(of[index]).first(framing::headerBytes));
    Text text;
    if (second != nullptr) {
        appendQuantity(text, *second, header.get());
    }
    return std::string(text.view());
}
