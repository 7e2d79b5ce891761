#include "commands/show/ShowView.h"

#include "FieldInfo.h"
#include "Message.h"
#include "format/FieldText.h"

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

ShowView::ShowView(Output& out, bool withColour) : output(out), colour(withColour) {}

void ShowView::message(const Place& place, const Decoded& decoded)
{
    const std::string about = decoded.kind.text.empty() ? "" : ": " + decoded.kind.text;
    output << painted(bold, decoded.kind.name + about)
           << painted(dim, "  #" + std::to_string(place.frame.number) + ", bytes " +
                               std::to_string(place.frame.beginOffset) + " to " +
                               std::to_string(place.frame.endOffset - 1))
           << "\n";
    writeFields(decoded.kind, decoded.message, "  ");
    output << "\n";
}

void ShowView::writeFields(const KindModel& kind, const Message& message, const std::string& indent)
{
    const std::size_t width = longestName(kind);
    for (const FieldModel& field : kind.fields) {
        if (field.info->isPresent(&message)) {
            writeField(field, message, indent, width);
        }
    }
}

void ShowView::writeField(const FieldModel& field, const Message& message,
                          const std::string& indent, std::size_t width)
{
    if (field.element != nullptr) {
        writeElements(field, message, indent);
        return;
    }
    std::string text = interpretedText(field, message, true);
    if (field.hasTexts && !field.repeated) {
        const std::string raw = rawText(field, message);
        if (raw != text) {
            text += painted(dim, " (" + raw + ")");
        }
    }
    output << indent << painted(cyan, padded(field.name, width)) << "  " << text << "\n";
}

void ShowView::writeElements(const FieldModel& field, const Message& message,
                             const std::string& indent)
{
    const unsigned count = field.info->getCount(&message);
    for (unsigned i = 0; i < count; ++i) {
        const Message* element = field.info->getValue(&message, i).toSubMessage();
        output << indent
               << painted(cyan,
                          field.name + " " + std::to_string(i + 1) + " of " + std::to_string(count))
               << "\n";
        writeFields(*field.element, *element, indent + "  ");
    }
}

std::string ShowView::painted(const char* code, const std::string& text) const
{
    return colour ? code + text + "\033[0m" : text;
}
