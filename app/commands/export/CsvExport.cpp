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

CsvExport::CsvExport(Output& out, CsvTables kindTables)
    : PrintingSink(out), tables(std::move(kindTables))
{
    if (tables.size() == 1) {
        lastKind = tables.begin()->first;
        text.append(tables.begin()->second.header());
    }
}

void CsvExport::print(const Found& found, Text& target)
{
    const CsvTable& table = tables.at(found.kind);
    if (found.kind != lastKind) {
        target.append(lastKind == nullptr ? "# " : "\n# ");
        target.append(found.kind->name);
        target.append('\n');
        target.append(table.header());
        lastKind = found.kind;
    }
    table.appendRows(target, input, found);
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

CsvFiles::CsvFiles(std::string path, CsvTables kindTables, CsvOutputs& outputs)
    : directory(std::move(path)), tables(std::move(kindTables)), files(outputs)
{
}

void CsvFiles::take(const Found& found)
{
    if (found.hasRecord()) {
        rows.clear();
        tables.at(found.kind).appendRows(rows, input, found);
        fileOf(*found.kind).write(rows.view());
    }
}

// The file of a kind, with its header line. One that cannot be written stays failed.
Output& CsvFiles::fileOf(const KindModel& kind)
{
    std::unique_ptr<Output>& file = files[&kind];
    if (file == nullptr) {
        std::error_code ignored;    // opening the file fails then, and says why
        std::filesystem::create_directories(directory, ignored);
        file = std::make_unique<Output>();
        const std::string name = identifierOf(kind.name) + ".csv";
        if (file->open((std::filesystem::path(directory) / name).string())) {
            *file << tables.at(&kind).header();
        }
    }
    return *file;
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
