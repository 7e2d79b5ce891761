#include "commands/list/ListView.h"

#include "Message.h"
#include "format/FieldText.h"

#include <algorithm>

namespace {

// The names of the columns that all kinds share, and "..." when some kind has more.
std::vector<std::string> sharedColumns(const std::vector<const KindModel*>& kinds)
{
    std::vector<std::string> names;
    if (kinds.empty()) {
        return names;
    }
    for (const FieldModel& field : kinds.front()->fields) {
        names.push_back(field.name);
    }
    bool more = false;
    for (const KindModel* kind : kinds) {
        const auto same = std::mismatch(
            names.begin(), names.end(), kind->fields.begin(), kind->fields.end(),
            [](const std::string& name, const FieldModel& field) { return name == field.name; });
        more = more || same.first != names.end() || same.second != kind->fields.end();
        names.erase(same.first, names.end());
    }
    if (more) {
        names.push_back("...");
    }
    return names;
}

}    // namespace

ListView::ListView(Output& out, const ListOptions& listOptions,
                   const std::vector<const KindModel*>& kinds)
    : output(out), options(listOptions)
{
    Message::fieldSeparator = QString::fromStdString(options.separator);
    writeHeader(kinds);
}

void ListView::writeHeader(const std::vector<const KindModel*>& kinds)
{
    std::vector<std::string> names = options.fields.empty() ? sharedColumns(kinds) : options.fields;
    if (options.position) {
        names.insert(names.begin(), {"No.", "Byte"});
    }
    std::string header;
    for (const std::string& name : names) {
        header += (header.empty() ? "" : options.separator) + name;
    }
    output << header << "\n";
}

void ListView::message(const Place& place, const Decoded& decoded)
{
    if (options.position) {
        output << std::to_string(place.frame.number) << options.separator
               << std::to_string(place.frame.beginOffset) << options.separator;
    }
    output << line(decoded) << "\n";
}

const ListView::Columns& ListView::columnsOf(const KindModel& kind)
{
    const auto [entry, isNew] = columns.try_emplace(&kind);
    if (isNew && options.fields.empty()) {
        for (const FieldModel& field : kind.fields) {
            entry->second.push_back(&field);
        }
    } else if (isNew) {
        for (const std::string& name : options.fields) {
            entry->second.push_back(kind.field(name));
        }
    }
    return entry->second;
}

std::string ListView::line(const Decoded& decoded)
{
    if (options.fields.empty() && !options.interpreted) {
        const QVector<bool> all(static_cast<int>(decoded.kind.fields.size()), true);
        return decoded.message.getRawStringFor(all).toStdString();
    }
    std::string text;
    const char* separator = "";
    for (const FieldModel* field : columnsOf(decoded.kind)) {
        text += separator;
        if (field != nullptr) {
            text += options.interpreted ? interpretedText(*field, decoded.message, false)
                                        : rawText(*field, decoded.message);
        }
        separator = options.separator.c_str();
    }
    return text;
}
