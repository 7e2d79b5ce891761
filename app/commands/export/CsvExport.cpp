#include "commands/export/CsvExport.h"

#include "base/Names.h"

#include <algorithm>
#include <filesystem>

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

std::string closeAll(CsvOutputs& outputs)
{
    std::string problem;
    for (const auto& [kind, output] : outputs) {
        if (!output->close() && problem.empty()) {
            problem = output->problem();
        }
    }
    return problem;
}

CsvFiles::CsvFiles(std::string path, CsvTables kindTables, bool withTimes, CsvOutputs& outputs)
    : directory(std::move(path)), noColumns(withTimes), tables(std::move(kindTables)),
      files(outputs)
{
}

void CsvFiles::take(const Found& found)
{
    if (found.hasRecord()) {
        rows.clear();
        Output& file = fileOf(*found.kind, *found.envelope);
        tables.at(found.kind).appendRows(rows, input, columns.at(found.kind), found);
        file.write(rows.view());
    }
}

// The file of a kind, with its header line. One that cannot be written stays failed.
Output& CsvFiles::fileOf(const KindModel& kind, const Envelope& envelope)
{
    std::unique_ptr<Output>& file = files[&kind];
    EnvelopeColumns& ofFile = columns.try_emplace(&kind, noColumns).first->second;
    const bool isWider = ofFile.grow(envelope);
    if (file == nullptr) {
        file = std::make_unique<Output>();
        if (open(kind, *file)) {
            *file << tables.at(&kind).header(ofFile);
        }
    } else if (isWider) {
        *file << "\n" + tables.at(&kind).header(ofFile);
    }
    return *file;
}

bool CsvFiles::open(const KindModel& kind, Output& file) const
{
    std::error_code ignored;    // opening the file fails then, and says why
    std::filesystem::create_directories(directory, ignored);
    return file.open(
        (std::filesystem::path(directory) / (identifierOf(kind.name) + ".csv")).string());
}

void CsvFiles::pause()
{
    for (const auto& file : files) {
        file.second->flush();
    }
}

bool CsvFiles::isDone() const
{
    return std::any_of(files.begin(), files.end(),
                       [](const auto& file) { return file.second->failed(); });
}
