#include "commands/show/ShowView.h"

#include "format/FieldText.h"
#include "format/PackedText.h"

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

}    // namespace

void ShowView::print(const Found& found, Text& target)
{
    printHead(found, target);
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

void ShowView::printFields(const KindModel& kind, const void* record, const std::string& indent,
                           Text& target) const
{
    const std::size_t width = longestName(kind);
    for (const FieldModel& field : kind.fields) {
        if (field.element != nullptr) {
            printElements(field, record, indent, target);
        } else if (field.isPresent(record)) {
            target.append(indent);
            paint(cyan, padded(field.name, width), target);
            target.append("  ");
            printField(field, record, target);
            target.append('\n');
        }
    }
}

// The meaning of a coded value is followed by the value.
void ShowView::printField(const FieldModel& field, const void* record, Text& target) const
{
    appendInterpreted(target, field, record, true);
    if (!field.hasTexts() || field.isRepeated()) {
        return;
    }
    const std::int64_t value = RTCM2_reader_integer(&field.reader, record, 0);
    if (meaningOf(field, value) != nullptr) {
        Text raw;
        appendPlain(raw, field, value);
        paint(dim, " (" + std::string(raw.view()) + ")", target);
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
