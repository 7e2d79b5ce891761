#include "commands/compare/Comparison.h"

#include "commands/compare/Alignment.h"
#include "format/FieldText.h"

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

Comparison::Comparison(const FormatModel& model, DecoderDriver& driver, const MessageStore& first,
                       const MessageStore& second)
    : formatModel(model), decoder(driver), a(first), b(second), satelliteDifferences(model)
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
    const Outcome decodedA = decoder.decode(a.bytesOf(a[inA]));
    const Outcome decodedB = decoder.decode(b.bytesOf(b[inB]));
    if (isSameMessage && !isEqual) {
        countFields(inA, inB, decodedA, decodedB);
    }
    if (hasSatellites && decodedA.record != nullptr && decodedB.record != nullptr) {
        satelliteDifferences.add(a[inA], decodedA.record, decodedB.record);
    }
}

void Comparison::countFields(std::uint32_t inA, std::uint32_t inB, const Outcome& decodedA,
                             const Outcome& decodedB)
{
    const unsigned type = a[inA].group.type;
    std::set<FieldKey> keys;    // each once a message
    if (decodedA.record != nullptr && decodedB.record != nullptr) {
        const KindModel& kind = *formatModel.kindOf(decodedA.record);
        eachDifference(kind, decodedA.record, decodedB.record,
                       [&](const FieldDifference& difference) {
                           keepFirst(inA, inB, &kind, &difference);
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
    const Outcome decoded = decoder.decode(of.bytesOf(of[index]));
    if (decoded.record == nullptr) {
        return "";
    }
    const KindModel& kind = *formatModel.kindOf(decoded.record);
    const FieldModel* const time = kind.field(RTCM2_MEANS_TIME);
    const FieldModel* const second = time != nullptr ? kind.quantityOf(*time) : nullptr;
    Text text;
    if (second != nullptr) {
        appendQuantity(text, *second, decoded.record);
    }
    return std::string(text.view());
}
