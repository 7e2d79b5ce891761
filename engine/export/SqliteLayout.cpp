#include "export/SqliteLayout.h"

#include "base/Names.h"

#include <algorithm>

namespace {

// Columns of the record first: these have the names that they have everywhere.
SqliteTable tableOf(const std::string& view, const std::string& name, const KindModel& kind,
                    const std::vector<ChosenField>& chosen)
{
    SqliteTable table{.view = view, .name = name, .kind = &kind, .messageId = {}, .position = {}};
    SqliteNames names;
    for (const ChosenField& each : chosen) {
        if (each.field->element == nullptr) {
            table.columns.push_back({names.add(each.field->identifier), each.field});
        }
    }
    table.messageId = names.add("message_id");
    table.position = names.add("position");
    return table;
}

SqliteKind kindOf(const KindModel& kind, const std::vector<ChosenField>& chosen, SqliteNames& names)
{
    const std::string view = names.add(identifierOf(kind.name));
    SqliteKind tables{.messages = tableOf(view, names.add(view + "_table"), kind, chosen),
                      .parts = {}};
    for (const FieldModel& field : kind.fields) {
        if (field.element == nullptr) {
            continue;
        }
        const std::string part = names.add(view + "_" + field.identifier);
        const std::string table = names.add(part + "_table");
        const auto found = std::find_if(chosen.begin(), chosen.end(), [&](const ChosenField& each) {
            return each.field == &field;
        });
        if (found != chosen.end()) {
            tables.parts.push_back(tableOf(part, table, *field.element, found->parts));
            tables.parts.back().elements = &field;
        }
    }
    return tables;
}

}    // namespace

const SqliteColumn* SqliteTable::satellite() const
{
    const auto found = std::find_if(columns.rbegin(), columns.rend(), [](const auto& column) {
        return column.field->row->meaning == RTCM2_MEANS_SATELLITE;
    });
    return found != columns.rend() ? &*found : nullptr;
}

SqliteLayout::SqliteLayout(const FormatModel& model, const std::vector<std::string>& fields,
                           Values values)
    : kinds(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    SqliteNames names({"inputs", "messages", "coded_texts"});
    const auto add = [&](const KindModel& kind) {
        kinds[kind.number()] = kindOf(kind, chosenFields(kind, fields, values), names);
    };
    add(model.unknownKind());
    for (const auto& kind : model.kinds()) {
        if (kind->isMain) {
            add(*kind);
        }
    }
}

std::string SqliteNames::add(std::string name)
{
    while (std::any_of(taken.begin(), taken.end(),
                       [&](const std::string& other) { return sameLetters(other, name); })) {
        name += '_';
    }
    taken.push_back(name);
    return name;
}
