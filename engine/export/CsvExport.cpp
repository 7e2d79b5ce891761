#include "export/CsvExport.h"

#include "base/Names.h"

CsvTables tablesFor(const std::vector<const KindModel*>& kinds, const CsvOptions& options)
{
    CsvTables tables;
    for (const KindModel* kind : kinds) {
        tables.try_emplace(kind, *kind, options);
    }
    return tables;
}

CsvExport::CsvExport(Output& out, CsvTables kindTables, bool withTimes)
    : PrintingSink(out), tables(std::move(kindTables)), envelopes(withTimes)
{
}

void CsvExport::print(const Found& found, Text& target)
{
    const CsvTable& table = tables.at(found.kind);
    const bool isWider = envelopes.grow(*found.envelope);
    if (found.kind != lastKind || isWider) {
        if (lastKind != nullptr || tables.size() > 1) {
            target.append(lastKind == nullptr ? "# " : "\n# ");
            target.append(found.kind->name);
            target.append('\n');
        }
        target.append(table.header(envelopes));
        lastKind = found.kind;
    }
    table.appendRows(target, input, envelopes, found);
}

void CsvExport::finish()
{
    if (tables.size() == 1 && lastKind == nullptr) {
        text.append(tables.begin()->second.header(envelopes));
    }
    PrintingSink::finish();
}

void CsvFiles::take(const Found& found)
{
    if (found.hasRecord()) {
        rows.clear();
        const File& file = fileOf(*found.kind, *found.envelope);
        tables.at(found.kind).appendRows(rows, input, file.columns, found);
        files.file(file.name).write(rows.view());
    }
}

// With its header line among the rows where it begins, or where more columns are needed.
CsvFiles::File& CsvFiles::fileOf(const KindModel& kind, const Envelope& envelope)
{
    const auto [entry, isNew] =
        begun.try_emplace(&kind, File{identifierOf(kind.name) + ".csv", noColumns});
    File& file = entry->second;
    const bool isWider = file.columns.grow(envelope);
    if (isNew || isWider) {
        rows.append(isNew ? "" : "\n");
        rows.append(tables.at(&kind).header(file.columns));
    }
    return file;
}
