#include "viewer/panes/FieldCells.h"

#include "format/Decimal.h"
#include "format/FieldText.h"

#include <algorithm>

namespace {

template <class Append>
QString written(Append append)
{
    Text text;
    append(text);
    return QString::fromUtf8(text.view().data(), static_cast<qsizetype>(text.size()));
}

bool isInteger(const FieldModel& field)
{
    return field.element == nullptr && !field.isRepeated() && !field.isReal() &&
           !field.isQuantity();
}

std::int64_t integerOf(const FieldSpot& spot)
{
    return RTCM2_reader_integer(&spot.field->reader, spot.record, 0);
}

bool hasValue(const FieldSpot& spot)
{
    return spot.field != nullptr && spot.field->isPresent(spot.record);
}

QString withUnit(const QString& value, const std::string& unit)
{
    return value.isEmpty() || unit.empty() ? value : value + ' ' + QString::fromStdString(unit);
}

QString quantityText(const FieldModel& quantity, const void* record)
{
    return withUnit(written([&](Text& text) { appendQuantity(text, quantity, record); }),
                    quantity.unit);
}

// The coded values that are among those of a run, with what they mean.
QString meaningsIn(const FieldSpot& spot)
{
    QStringList meanings;
    for (const RTCM2_text_s& coded : codedTexts(*spot.field)) {
        const unsigned count = spot.field->count(spot.record);
        for (unsigned i = 0; i < count; ++i) {
            if (RTCM2_reader_integer(&spot.field->reader, spot.record, i) == coded.value) {
                const QString number =
                    written([&](Text& text) { appendNumber(text, *spot.field, coded.value); });
                meanings += number + QStringLiteral(": ") + QString::fromUtf8(coded.text);
                break;
            }
        }
    }
    return meanings.join(QStringLiteral(", "));
}

QString headlineOf(const FieldSpot& element)
{
    QStringList parts;
    for (const auto meaning : {RTCM2_MEANS_SATELLITE, RTCM2_MEANS_CORRECTION}) {
        if (const FieldModel* const field = element.kind->field(meaning)) {
            parts += quantityOf({element.kind, field, element.record});
        }
    }
    parts.removeAll(QString());
    return parts.join(QStringLiteral("  "));
}

QVariant quantityKey(const FieldSpot& spot)
{
    RTCM2_decimal_s value;
    if (RTCM2_reader_quantity(&*spot.field->quantity, spot.record, &value) != RTCM2_ACCESS_DONE) {
        return {};
    }
    const RTCM2_system_s* const system =
        spot.field->isScaled() ? nullptr : RTCM2_system_of(spot.record);
    constexpr double satellitesOfSystem = 1e6;
    return realOf(value) +
           (system != nullptr ? static_cast<double>(system->value) * satellitesOfSystem : 0);
}

}    // namespace

QString nameOf(const MessageDetail& detail, const FieldPlace& place)
{
    const FieldSpot whole = spotOf(detail, {place.field});
    if (whole.field == nullptr) {
        return {};
    }
    QString name = QString::fromStdString(whole.field->name);
    if (place.element >= 0) {
        name += QStringLiteral(" %1 of %2")
                    .arg(place.element + 1)
                    .arg(whole.field->count(whole.record));
    }
    if (place.part >= 0) {
        name += QStringLiteral(": ") + QString::fromStdString(spotOf(detail, place).field->name);
    }
    return name;
}

QString numberOf(const FieldSpot& spot)
{
    if (!hasValue(spot)) {
        return {};
    }
    const FieldModel& field = *spot.field;
    if (field.element != nullptr) {
        return QString::number(field.count(spot.record));
    }
    if (!isInteger(field)) {
        return withUnit(written([&](Text& text) { appendRaw(text, field, spot.record); }),
                        field.isQuantity() ? std::string() : field.unit);
    }
    return withUnit(written([&](Text& text) { appendNumber(text, field, integerOf(spot)); }),
                    field.unit);
}

QString meaningOf(const FieldSpot& spot)
{
    if (!hasValue(spot) || spot.field->element != nullptr || spot.field->isText()) {
        return {};
    }
    if (spot.field->isRepeated()) {
        return meaningsIn(spot);
    }
    return isInteger(*spot.field) ? QString::fromUtf8(meaningOf(*spot.field, integerOf(spot)))
                                  : QString();
}

QString quantityOf(const FieldSpot& spot)
{
    if (spot.field == nullptr) {
        return spot.kind != nullptr ? headlineOf(spot) : QString();
    }
    const FieldModel* const quantity = spot.kind->quantityOf(*spot.field);
    return quantity != nullptr ? quantityText(*quantity, spot.record) : QString();
}

QString valueOf(const FieldSpot& spot)
{
    const QString number = numberOf(spot);
    const QString meaning = meaningOf(spot);
    const QString quantity = quantityOf(spot);
    const QString value =
        meaning.isEmpty() ? number : QStringLiteral("%1 (%2)").arg(meaning, number);
    if (value.isEmpty() || quantity.isEmpty()) {
        return value + quantity;
    }
    return value + QStringLiteral(" = ") + quantity;
}

QVariant sortKeyOf(const FieldSpot& spot)
{
    if (!hasValue(spot)) {
        return {};
    }
    if (spot.field->isQuantity()) {
        return quantityKey(spot);
    }
    if (spot.field->isReal()) {
        return RTCM2_reader_real(&spot.field->reader, spot.record);
    }
    return isInteger(*spot.field) ? QVariant::fromValue<qlonglong>(integerOf(spot))
                                  : QVariant(numberOf(spot));
}

bool concernsMessage(const FieldSpot& spot)
{
    return spot.field == nullptr || (spot.field->isPresent(spot.record) &&
                                     spot.field->concerns(RTCM2_system_of(spot.record)));
}

int alarmOf(const FieldSpot& spot)
{
    if (!hasValue(spot) || !isInteger(*spot.field)) {
        return 0;
    }
    const RTCM2_member_s& row = *spot.field->row;
    const std::int64_t value = integerOf(spot);
    const RTCM2_alarm_s* const end = row.alarms + row.alarm_count;
    const RTCM2_alarm_s* const found =
        std::find_if(row.alarms, end, [&](const auto& alarm) { return alarm.value == value; });
    return found != end ? found->alarm : 0;
}
