#include "FieldDescriptor.h"

#include "FloatRepresentation.h"
#include "MemLeakTracer.h"
#include "MessageInfo.h"
#include "Misuse.h"
#include "PluginKinds.h"
#include "RecordMessage.h"
#include "ValueText.h"
#include "record_values.h"

#include <QLocale>

#include <algorithm>
#include <mutex>
#include <optional>

// The default locale at the time when the first text is asked for, on whatever thread.
struct FieldDescriptor::Locale {
    void take()
    {
        std::call_once(taken, [this] { locale.emplace(); });
    }
    const QLocale& get() const { return *locale; }

    std::once_flag taken;
    std::optional<QLocale> locale;
};

namespace {

// The descriptor of a sub-record's kind comes into being with the first field of such elements.
FieldType typeOf(const RTCM2_member_s& row)
{
    switch (row.type) {
    case RTCM2_TYPE_BYTE:
        return FieldType::byte();
    case RTCM2_TYPE_CHARACTER:
        return FieldType::ch();
    case RTCM2_TYPE_REAL:
        return FieldType::f64();
    case RTCM2_TYPE_SIGNED:
        return FieldType::i(row.bits);
    case RTCM2_TYPE_RECORD:
        return FieldType::subMessage(pluginKinds[row.elements->kind].descriptor());
    default:
        return FieldType::u(row.bits);
    }
}

bool isComputed(const RTCM2_member_s& row)
{
    return row.role == RTCM2_ROLE_COUNT || row.role == RTCM2_ROLE_LOOKUP ||
           row.role == RTCM2_ROLE_CONSTANT;
}

}    // namespace

// Asks for the format first, so that whichever descriptor is touched first sets up the registry.
FieldDescriptor::FieldDescriptor(const KindFields& kindFields, int index, const char* className)
    : FieldInfo(QString::fromUtf8(RTCM2_kind(kindFields.kind)->members[index].display),
                typeOf(RTCM2_kind(kindFields.kind)->members[index])),
      row(&RTCM2_kind(kindFields.kind)->members[index]),
      isPlain(row->when == nullptr && row->length == nullptr), storage(storageOf(*row)),
      width(row->bits), offset(row->offset), kind(&kindFields),
      messageClass(pluginKinds[kindFields.kind].messageClass), name(className),
      locale(std::make_shared<Locale>())
{
    kind->trace->pass();
    MemLeakTracer::allocateObject(QString::fromLatin1(name));
    formatDescriptor();
    addSubFields();
    describe();
}

FieldDescriptor::~FieldDescriptor()
{
    kind->trace->pass();
    MemLeakTracer::deallocateObject(QString::fromLatin1(name));
}

// The fields that show parts of this one.
void FieldDescriptor::addSubFields()
{
    const RTCM2_kind_s& kindRow = *RTCM2_kind(kind->kind);
    for (unsigned i = 0; i < kindRow.member_count; ++i) {
        const RTCM2_member_s& member = kindRow.members[i];
        if (member.role == RTCM2_ROLE_SLICE && member.of == row) {
            addSubFieldInfo(kind->fields[i]());
        }
    }
}

void FieldDescriptor::describe()
{
    if (row->when != nullptr) {
        setIsOptional(true);
    }
    if (row->length != nullptr) {
        setIsRepeated(true);
    }
    if (isComputed(*row)) {
        setVirtual(true);
    }
    if (row->role != RTCM2_ROLE_ARRAY) {
        setRole(Data);
    }
    if (*row->unit != '\0') {
        setUnit(QString::fromUtf8(row->unit));
    }
    for (unsigned i = 0; i < row->text_count; ++i) {
        addSymbolicValue(valueOf(row->texts[i].value), QString::fromUtf8(row->texts[i].text));
    }
    if (row->has_do_not_use != 0) {
        setDoNotUseValue(valueOf(row->do_not_use));
    }
}

// The message as one of the field's kind, or null. The message classes are final, so that their
// type identity is all that a dynamic cast would find out.
const RecordMessage* FieldDescriptor::ofKind(const Message* message) const
{
    return message != nullptr && typeid(*message) == *messageClass
               ? static_cast<const RecordMessage*>(message)
               : nullptr;
}

const RecordMessage& FieldDescriptor::checkedKind(const Message* message) const
{
    const RecordMessage* const ours = ofKind(message);
    if (ours == nullptr) {
        throwMisuse(
            "Requesting value for a field that is not present in the given kind of message.");
    }
    return *ours;
}

bool FieldDescriptor::isPresent(const Message* message) const
{
    return getCount(message) != 0;
}

unsigned int FieldDescriptor::getCount(const Message* message) const
{
    const RecordMessage* const ours = ofKind(message);
    if (ours == nullptr) {
        return 0;
    }
    if (row->when != nullptr && !rtcm2::isPresent(ours->assertedRecord(), *row)) {
        return 0;
    }
    return row->length != nullptr ? ours->numberOf(*row) : 1;
}

void FieldDescriptor::demandValue(const RecordMessage& message, unsigned index) const
{
    if (row->when != nullptr && !rtcm2::isPresent(message.assertedRecord(), *row)) {
        throwMisuse("Requesting value for an optional field that is not present.");
    }
    if (row->length != nullptr) {
        const unsigned values = message.numberOf(*row);
        if (values == 0) {
            throwMisuse("Requesting value for an repeated field that is repeated 0 times.");
        }
        if (index >= values) {
            throwMisuse("Requesting value for an repeated field with out of range index.");
        }
    } else if (index != 0) {
        throwMisuse("Requesting value for a non-repeated field using non-zero index.");
    }
}

FieldDescriptor::Storage FieldDescriptor::storageOf(const RTCM2_member_s& row)
{
    switch (row.type) {
    case RTCM2_TYPE_BYTE:
        return Storage::byte;
    case RTCM2_TYPE_CHARACTER:
        return Storage::character;
    case RTCM2_TYPE_REAL:
        return Storage::real;
    case RTCM2_TYPE_RECORD:
        return Storage::record;
    case RTCM2_TYPE_SIGNED:
        return row.size == 1   ? Storage::i8
               : row.size == 2 ? Storage::i16
               : row.size == 4 ? Storage::i32
                               : Storage::i64;
    default:
        return row.size == 1   ? Storage::u8
               : row.size == 2 ? Storage::u16
               : row.size == 4 ? Storage::u32
                               : Storage::u64;
    }
}

// The value at its place in a record.
inline FieldValue FieldDescriptor::valueAt(const char* place) const
{
    switch (storage) {
    case Storage::byte:
        return FieldValue::byte(rtcm2::valueAt<quint8>(place));
    case Storage::u8:
        return FieldValue::u(rtcm2::valueAt<quint8>(place), width);
    case Storage::u16:
        return FieldValue::u(rtcm2::valueAt<quint16>(place), width);
    case Storage::u32:
        return FieldValue::u(rtcm2::valueAt<quint32>(place), width);
    case Storage::u64:
        return FieldValue::u(rtcm2::valueAt<quint64>(place), width);
    case Storage::i8:
        return FieldValue::i(rtcm2::valueAt<qint8>(place), width);
    case Storage::i16:
        return FieldValue::i(rtcm2::valueAt<qint16>(place), width);
    case Storage::i32:
        return FieldValue::i(rtcm2::valueAt<qint32>(place), width);
    case Storage::i64:
        return FieldValue::i(rtcm2::valueAt<qint64>(place), width);
    case Storage::real:
        return FieldValue::f64(rtcm2::valueAt<double>(place));
    case Storage::character:
        return FieldValue::ch(*place);
    case Storage::record:
        break;
    }
    return {};
}

inline FieldValue FieldDescriptor::valueIn(const RecordMessage& message, unsigned index) const
{
    return isPlain ? valueAt(static_cast<const char*>(message.assertedRecord()) + offset)
                   : valueElsewhere(message, index);
}

// Where a value stands that a message may lack. What a run announces beyond its room reads as 0.
const char* FieldDescriptor::placeIn(const RecordMessage& message, unsigned index) const
{
    static constexpr char zero = 0;
    const char* const place = rtcm2::placeOf(message.assertedRecord(), *row);
    if (row->role != RTCM2_ROLE_RUN) {
        message.demandPresent(*row);
        return place;
    }
    message.demandIndex(*row, index);
    const unsigned room = row->limit + (row->type == RTCM2_TYPE_CHARACTER ? 1U : 0U);
    return index < room ? place + index : &zero;
}

FieldValue FieldDescriptor::valueElsewhere(const RecordMessage& message, unsigned index) const
{
    return storage == Storage::record ? FieldValue::subMessage(message.subMessage(*row, index))
                                      : valueAt(placeIn(message, index));
}

const FieldValue FieldDescriptor::getValue(const Message* message, unsigned int index) const
{
    const RecordMessage& ours = checkedKind(message);
    demandValue(ours, index);
    return valueIn(ours, index);
}

const FieldValue FieldDescriptor::getValueUnchecked(const Message* message,
                                                    unsigned int index) const
{
    return valueIn(*static_cast<const RecordMessage*>(message), index);
}

// An integer as a value of the field's type.
FieldValue FieldDescriptor::valueOf(qint64 value) const
{
    switch (row->type) {
    case RTCM2_TYPE_BYTE:
        return FieldValue::byte(static_cast<unsigned char>(value));
    case RTCM2_TYPE_SIGNED:
        return FieldValue::i(value, width);
    default:
        return FieldValue::u(static_cast<quint64>(value), width);
    }
}

QString FieldDescriptor::getValueString(const Message* message) const
{
    if (row->type != RTCM2_TYPE_CHARACTER) {
        return FieldInfo::getValueString(message);
    }
    const RecordMessage& ours = checkedKind(message);
    return ValueText::text(rtcm2::placeOf(ours.assertedRecord(), *row),
                           std::min(ours.numberOf(*row), row->limit + 1U));
}

QString FieldDescriptor::getInterpretedString(const Message* message, unsigned int index,
                                              bool withUnit) const
{
    if (row->type == RTCM2_TYPE_RECORD) {
        return QStringLiteral("submsg");
    }
    locale->take();
    const QString text = textIn(*static_cast<const RecordMessage*>(message), index);
    return withUnit && !unit.isEmpty() ? withUnitText(text) : text;
}

QString FieldDescriptor::textIn(const RecordMessage& message, unsigned index) const
{
    const char* const place = placeIn(message, index);
    if (row->type == RTCM2_TYPE_REAL) {
        return FloatRepresentation::getString(rtcm2::valueAt<double>(place), 'f', 6, true);
    }
    return integerText(rtcm2::integerAt(place, *row));
}

// The text that the value has of its own, or else the plain rendering of its type. A value that
// means "do not use" is the host's to word.
QString FieldDescriptor::integerText(qint64 value) const
{
    if (row->has_do_not_use != 0 && value == row->do_not_use) {
        return Message::useDoNotUseString ? Message::doNotUseString : QString();
    }
    for (unsigned i = 0; i < row->text_count; ++i) {
        if (row->texts[i].value == value) {
            return getSymbolicValues()[static_cast<int>(i)].second;
        }
    }
    switch (row->type) {
    case RTCM2_TYPE_BYTE:
        return ValueText::hex(static_cast<unsigned>(value));
    case RTCM2_TYPE_CHARACTER:
        return ValueText::character(static_cast<char>(value));
    case RTCM2_TYPE_SIGNED:
        return locale->get().toString(value);
    default:
        return locale->get().toString(static_cast<quint64>(value));
    }
}

QString FieldDescriptor::withUnitText(const QString& text) const
{
    return unitAfterValue ? text + QLatin1Char(' ') + unit : unit + QLatin1Char(' ') + text;
}
