#include "commands/list/ListView.h"

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
    : output(out), options(listOptions), columns(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    for (const KindModel* kind : kinds) {
        columns[kind->number()] = columnsOf(*kind);
    }
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

ListView::Columns ListView::columnsOf(const KindModel& kind) const
{
    Columns all;
    if (options.fields.empty()) {
        for (const FieldModel& field : kind.fields) {
            all.push_back({&field, nullptr});
        }
    }
    for (const std::string& name : options.fields) {
        all.push_back(pathOf(kind, name));
    }
    return all;
}

void ListView::print(const Batch& batch, Text& text) const
{
    for (const Found& found : batch.found) {
        if (found.what == Found::What::message) {
            printLine(found, text);
        }
    }
}

void ListView::printLine(const Found& found, Text& text) const
{
    const std::size_t begin = text.size();
    if (options.position) {
        appendUnsigned(text, found.number);
        text.append(options.separator);
        appendUnsigned(text, found.begin);
        text.append(options.separator);
    }
    for (const FieldPath& path : columns[found.kind->number()]) {
        if (path.field != nullptr) {
            options.interpreted ? appendInterpreted(text, path, found.record, false)
                                : appendRaw(text, path, found.record);
        }
        text.append(options.separator);
    }
    text.cut(std::max(begin, text.size() - options.separator.size()));
    text.append('\n');
}
