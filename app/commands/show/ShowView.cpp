#include "commands/show/ShowView.h"

#include "format/EnvelopeField.h"
#include "format/FieldText.h"
#include "format/PackedText.h"
#include "forms/TimeStamp.h"

#include <algorithm>

namespace {

constexpr const char* bold = "\033[1m";
constexpr const char* cyan = "\033[36m";
constexpr const char* dim = "\033[2m";

std::string padded(std::string text, std::size_t width)
{
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::size_t longestName(const KindModel& kind)
{
    std::size_t longest = 0;
    for (const FieldModel& field : kind.fields) {
        longest = std::max(longest, field.name.size());
    }
    return longest;
}

bool isBytes(const FieldModel& field)
{
    return field.isRepeated() && field.row->type == RTCM2_TYPE_BYTE;
}

std::string numberText(const FieldModel& field, std::int64_t value)
{
    Text text;
    appendNumber(text, field, value);
    return std::string(text.view());
}

}    // namespace

void ShowView::print(const Found& found, Text& target)
{
    printHead(found, target);
    printEnvelope(*found.envelope, target);
    printFields(*found.kind, found.record, "  ", target);
    if (found.kind->isUnknown) {
        appendByteLines(target, found.bytes, "  ");
    }
    target.append('\n');
}

void ShowView::printHead(const Found& found, Text& target) const
{
    const std::string about = found.kind->text.empty() ? "" : ": " + found.kind->text;
    paint(bold, found.kind->name + about, target);
    paint(dim,
          "  #" + std::to_string(found.number) + ", bytes " + std::to_string(found.begin) + " to " +
              std::to_string(found.end - 1),
          target);
    target.append('\n');
}

void ShowView::printEnvelope(const Envelope& envelope, Text& target)
{
    if (envelope.received) {
        target.append("  received " + timeText(*envelope.received) + "\n");
    }
    if (const auto& sender = envelope.sender) {
        target.append("  sent by MMSI " + std::to_string(sender->mmsi));
        for (const EnvelopeField& field : envelopeFields()) {
            if (field.isOfPosition && sender->hasPosition()) {
                target.append(", " + std::string(field.label) + " " +
                              envelopeText(field, envelope));
            }
        }
        target.append('\n');
    }
}

void ShowView::printFields(const KindModel& kind, const void* record, const std::string& indent,
                           Text& target) const
{
    const std::size_t width = longestName(kind);
    const RTCM2_system_s* const system = RTCM2_system_of(record);
    for (const FieldModel& field : kind.fields) {
        if (!field.isPresent(record) || !(showsAll || field.concerns(system))) {
            continue;
        }
        if (field.element != nullptr) {
            printElements(field, record, indent, target);
        } else {
            target.append(indent);
            paint(cyan, padded(field.name, width), target);
            target.append("  ");
            printField(kind, field, record, target);
            target.append('\n');
            if (isBytes(field)) {
                printBytes(field, record, indent + "  ", target);
            }
        }
    }
}

void ShowView::printField(const KindModel& kind, const FieldModel& field, const void* record,
                          Text& target) const
{
    printValue(field, record, target);
    if (const FieldModel* const quantity = kind.quantityOf(field)) {
        printQuantity(*quantity, record, target);
    }
}

// The meaning of a coded value is followed by the value; bytes are counted.
void ShowView::printValue(const FieldModel& field, const void* record, Text& target) const
{
    if (isBytes(field)) {
        const unsigned count = field.count(record);
        appendUnsigned(target, count);
        target.append(count == 1 ? " byte" : " bytes");
        return;
    }
    if (field.isRepeated() || field.isReal()) {
        appendInterpreted(target, field, record, true);
        return;
    }
    const std::int64_t value = RTCM2_reader_integer(&field.reader, record, 0);
    if (const char* const meaning = meaningOf(field, value)) {
        target.append(meaning);
        paint(dim, " (" + numberText(field, value) + ")", target);
        return;
    }
    appendNumber(target, field, value);
    target.append(field.unit.empty() ? "" : " " + field.unit);
}

void ShowView::printQuantity(const FieldModel& quantity, const void* record, Text& target) const
{
    const std::size_t begin = target.size();
    target.append("  = ");
    if (!appendQuantity(target, quantity, record)) {
        target.cut(begin);
    } else if (!quantity.unit.empty()) {
        target.append(" " + quantity.unit);
    }
}

// And those of the coded values that are among them.
void ShowView::printBytes(const FieldModel& field, const void* record, const std::string& indent,
                          Text& target) const
{
    const auto* const first =
        reinterpret_cast<const std::uint8_t*>(RTCM2_reader_place(&field.reader, record));
    const std::span bytes(first, field.count(record));
    appendByteLines(target, bytes, indent);
    for (const RTCM2_text_s& coded : codedTexts(field)) {
        if (std::find(bytes.begin(), bytes.end(), coded.value) != bytes.end()) {
            target.append(indent + numberText(field, coded.value) + ": " + coded.text + "\n");
        }
    }
}

void ShowView::printElements(const FieldModel& field, const void* record, const std::string& indent,
                             Text& target) const
{
    const std::string ofAll = " of " + std::to_string(field.count(record));
    unsigned number = 0;
    field.eachElement(record, [&](const void* element) {
        target.append(indent);
        paint(cyan, field.name + " " + std::to_string(++number) + ofAll, target);
        target.append('\n');
        printFields(*field.element, element, indent + "  ", target);
    });
}

void ShowView::paint(const char* code, std::string_view shown, Text& target) const
{
    if (colour) {
        target.append(code);
    }
    target.append(shown);
    if (colour) {
        target.append("\033[0m");
    }
}
