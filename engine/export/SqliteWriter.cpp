#include "export/SqliteWriter.h"

#include "base/Characters.h"
#include "export/SqliteSql.h"
#include "format/EnvelopeField.h"
#include "format/FieldText.h"
#include "format/PackedText.h"
#include "forms/TimeStamp.h"

#include <chrono>

namespace {

std::string timeNow()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return timeText(std::chrono::duration_cast<std::chrono::milliseconds>(now).count() * 1000);
}

// Always with six decimals, so that times sort as texts.
std::string sortableTime(std::int64_t microseconds)
{
    std::string text = timeText(microseconds);
    constexpr std::size_t withThreeDecimals = std::string_view("2000-01-01T00:00:00.000Z").size();
    return text.size() == withThreeDecimals ? text.insert(withThreeDecimals - 1, "000") : text;
}

std::optional<SqliteValue> valueOf(const FieldModel* field)
{
    return field != nullptr ? std::optional<SqliteValue>(*field) : std::nullopt;
}

void bindTo(SqliteStatement& statement, int parameter, std::optional<SqliteValue>& value,
            const void* record)
{
    value ? value->bind(statement, parameter, record) : statement.bindNull(parameter);
}

}    // namespace

SqliteWriter::SqliteWriter(SqliteFile& target, const FormatModel& model,
                           const std::vector<const KindModel*>& kinds, SqliteOptions sqliteOptions)
    : file(target), database(target.database()), options(std::move(sqliteOptions)),
      layout(model, options.fields, options.values), message(database, sqliteSql::insertMessage()),
      kindRows(static_cast<std::size_t>(RTCM2_last_kind()) + 1)
{
    for (const KindModel* kind : kinds) {
        requireSameColumns(layout.of(*kind));
    }
    if (file.isNew()) {
        makeIndexes(sqliteSql::commonIndexes());
    }
}

void SqliteWriter::requireSameColumns(const SqliteKind& kind)
{
    requireSameColumns(kind.messages);
    for (const SqliteTable& part : kind.parts) {
        requireSameColumns(part);
    }
}

void SqliteWriter::requireSameColumns(const SqliteTable& table)
{
    std::string wanted = table.messageId + (table.elements != nullptr ? "," + table.position : "");
    for (const SqliteColumn& column : table.columns) {
        wanted += "," + column.name;
    }
    const std::string present = database.text("SELECT group_concat(name) FROM pragma_table_info(" +
                                              sqliteSql::literal(table.name) + ")");
    if (!present.empty() && present != wanted) {
        throw SqliteError{"cannot write " + file.fileName() + ": its table " + table.name +
                          " has other columns; use --fields, --scaled and --raw as when it was "
                          "made, or name another file"};
    }
}

void SqliteWriter::beginInput(const std::string& name)
{
    file.begin();
    SqliteStatement input(database,
                          "INSERT INTO inputs (name, exported, program) VALUES (?, ?, ?)");
    const std::string shown = validUtf8(name);
    const std::string now = timeNow();
    input.bind(1, shown);
    input.bind(2, now);
    input.bind(3, options.program);
    input.run();
    inputId = database.lastId();
}

void SqliteWriter::endInput(const std::string& form)
{
    file.begin();
    SqliteStatement input(database, "UPDATE inputs SET form = ? WHERE id = ?");
    form.empty() ? input.bindNull(1) : input.bind(1, form);
    input.bind(2, inputId);
    input.run();
}

void SqliteWriter::add(const Found& found)
{
    file.begin();
    KindRows& rows = rowsOf(*found.kind);
    const std::int64_t id = insertMessage(rows, found);
    for (SqliteRows& table : rows.tables) {
        table.insert(id, found.record);
    }
}

void SqliteWriter::finish()
{
    database.execute(indexes);
    indexes.clear();
}

SqliteWriter::KindRows& SqliteWriter::rowsOf(const KindModel& kind)
{
    std::unique_ptr<KindRows>& rows = kindRows[kind.number()];
    if (rows != nullptr) {
        return *rows;
    }
    const SqliteKind& tables = layout.of(kind);
    const FieldModel* const time = kind.field(RTCM2_MEANS_TIME);
    auto made = std::make_unique<KindRows>();
    made->type = valueOf(kind.field(RTCM2_MEANS_TYPE));
    made->station = valueOf(kind.field(RTCM2_MEANS_STATION));
    made->time = valueOf(time != nullptr ? kind.quantityOf(*time) : nullptr);
    makeTable(tables.messages, nullptr);
    made->tables.emplace_back(database, tables.messages);
    for (const SqliteTable& part : tables.parts) {
        makeTable(part, &tables.messages);
        made->tables.emplace_back(database, part);
    }
    rows = std::move(made);
    return *rows;
}

// A table that an earlier run made is complete.
void SqliteWriter::makeTable(const SqliteTable& table, const SqliteTable* parent)
{
    if (database.number("SELECT count(*) FROM sqlite_master WHERE name = " +
                        sqliteSql::literal(table.name)) != 0) {
        return;
    }
    database.execute(sqliteSql::table(table) + sqliteSql::view(table, parent));
    makeIndexes(sqliteSql::indexOf(table));
    addCodedTexts(table);
}

// A live input has no end at which there would be time for them.
void SqliteWriter::makeIndexes(const std::string& sql)
{
    file.isLive() ? database.execute(sql) : void(indexes += sql);
}

// Of two texts of a value, the first one holds.
void SqliteWriter::addCodedTexts(const SqliteTable& table)
{
    SqliteStatement insert(database, "INSERT OR IGNORE INTO coded_texts VALUES (?, ?, ?, ?)");
    for (const SqliteColumn& column : table.columns) {
        if (!column.field->hasTexts()) {
            continue;
        }
        for (const RTCM2_text_s& coded : codedTexts(*column.field)) {
            insert.bind(1, table.kind->name);
            insert.bind(2, column.field->identifier);
            insert.bind(3, coded.value);
            insert.bind(4, std::string_view(coded.text));
            insert.run();
        }
    }
}

std::int64_t SqliteWriter::insertMessage(KindRows& rows, const Found& found)
{
    int parameter = 0;
    message.bind(++parameter, inputId);
    message.bind(++parameter, static_cast<std::int64_t>(found.number));
    message.bind(++parameter, static_cast<std::int64_t>(found.begin));
    message.bind(++parameter, found.kind->name);
    bindTo(message, ++parameter, rows.type, found.record);
    bindTo(message, ++parameter, rows.station, found.record);
    bindTo(message, ++parameter, rows.time, found.record);
    parameter = bindEnvelope(parameter, *found.envelope);
    message.bind(++parameter, std::int64_t{found.isShort});
    fill.clear();
    appendUnusualFill(fill, found.bytes, found.bits);
    fill.empty() ? message.bindNull(++parameter) : message.bind(++parameter, fill);
    // Of a message of unknown type nothing else is there.
    options.withPacked || found.kind->isUnknown ? message.bind(++parameter, found.bytes)
                                                : message.bindNull(++parameter);
    message.run();
    return database.lastId();
}

// The last parameter that was bound.
int SqliteWriter::bindEnvelope(int parameter, const Envelope& envelope)
{
    if (envelope.received) {
        received = sortableTime(*envelope.received);
        message.bind(++parameter, received);
    } else {
        message.bindNull(++parameter);
    }
    for (const EnvelopeField& field : envelopeFields()) {
        const std::optional<double> value = field.value(envelope);
        value ? message.bind(++parameter, *value) : message.bindNull(++parameter);
    }
    return parameter;
}
