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
    : PrintingSink(out), options(listOptions), envelopes(options.times),
      names(options.fields.empty() ? sharedColumns(kinds) : options.fields),
      columns(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    for (const KindModel* kind : kinds) {
        columns[kind->number()] = columnsOf(*kind);
    }
}

void ListView::appendHeading(Text& target) const
{
    const std::size_t begin = target.size();
    const auto append = [&](std::string_view name) {
        target.append(target.size() == begin ? "" : options.separator);
        target.append(name);
    };
    if (options.withInput) {
        append("Input");
    }
    if (options.position) {
        append("No.");
        append("Byte");
    }
    envelopes.eachName([&](const char* name, const char*, std::size_t) { append(name); });
    for (const std::string& name : names) {
        append(name);
    }
    target.append('\n');
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
    if (envelopes.grow(*found.envelope) || !hasHeading) {
        hasHeading = true;
        appendHeading(target);
    }
    const std::size_t begin = target.size();
    target.append(input);
    if (options.position) {
        appendUnsigned(target, found.number);
        target.append(options.separator);
        appendUnsigned(target, found.begin);
        target.append(options.separator);
    }
    envelopes.eachCell(*found.envelope, [&](const std::string& cell, std::size_t) {
        target.append(cell);
        target.append(options.separator);
    });
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
