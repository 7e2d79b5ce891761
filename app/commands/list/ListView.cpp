#include "commands/list/ListView.h"

#include "base/Terminal.h"
#include "format/FieldText.h"
#include "format/PackedText.h"

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
    : PrintingSink(out), options(listOptions),
      columns(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    for (const KindModel* kind : kinds) {
        columns[kind->number()] = columnsOf(*kind);
    }
    makeHeading(kinds);
}

void ListView::makeHeading(const std::vector<const KindModel*>& kinds)
{
    std::vector<std::string> names = options.fields.empty() ? sharedColumns(kinds) : options.fields;
    if (options.position) {
        names.insert(names.begin(), {"No.", "Byte"});
    }
    if (options.withInput) {
        names.insert(names.begin(), "Input");
    }
    for (const std::string& name : names) {
        heading += (heading.empty() ? "" : options.separator) + name;
    }
    heading += '\n';
}

void ListView::beginInput(const std::string& name)
{
    input = options.withInput ? printable(name) + options.separator : std::string();
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

// The decoder's own lines have hexadecimal digits as they are.
void ListView::appendValues(const FieldPath& path, const void* record, Text& target) const
{
    if (!options.fields.empty()) {
        appendColumn(target, path, record, options.interpreted);
    } else if (options.interpreted) {
        appendInterpreted(target, *path.field, record, false);
    } else {
        appendRaw(target, *path.field, record);
    }
}

void ListView::print(const Found& found, Text& target)
{
    const std::size_t begin = target.size();
    target.append(input);
    if (options.position) {
        appendUnsigned(target, found.number);
        target.append(options.separator);
        appendUnsigned(target, found.begin);
        target.append(options.separator);
    }
    for (const FieldPath& path : columns[found.kind->number()]) {
        if (path.field != nullptr) {
            appendValues(path, found.record, target);
        }
        target.append(options.separator);
    }
    if (found.kind->isUnknown && options.fields.empty()) {
        std::string digits;
        appendHex(digits, found.bytes);
        target.append(digits);
        target.append(options.separator);
    }
    target.cut(std::max(begin, target.size() - options.separator.size()));
    target.append('\n');
}
