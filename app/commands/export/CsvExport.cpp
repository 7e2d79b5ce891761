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

CsvExport::CsvExport(Output& out, CsvTables kindTables) : output(out), tables(std::move(kindTables))
{
    if (tables.size() == 1) {
        output << tables.begin()->second.header();
    }
}

void CsvExport::print(const Batch& batch, Text& text) const
{
    const KindModel* lastKind = tables.size() == 1 ? tables.begin()->first : batch.kindBefore;
    for (const Found& found : batch.found) {
        if (found.what != Found::What::message) {
            continue;
        }
        const CsvTable& table = tables.at(found.kind);
        if (found.kind != lastKind) {
            text.append(lastKind == nullptr ? "# " : "\n# ");
            text.append(found.kind->name);
            text.append('\n');
            text.append(table.header());
            lastKind = found.kind;
        }
        table.appendRows(text, *batch.input, found);
    }
}

CsvFiles::CsvFiles(std::string path, CsvTables kindTables, std::string& failure)
    : directory(std::move(path)), tables(std::move(kindTables)), problem(failure)
{
}

void CsvFiles::take(const Batch& batch, Text& printed)
{
    for (const Found& found : batch.found) {
        if (found.what == Found::What::message) {
            Output& file = fileOf(*found.kind);
            printed.clear();
            tables.at(found.kind).appendRows(printed, *batch.input, found);
            file.write(printed.view());
        }
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

void CsvFiles::finish()
{
    for (const auto& file : files) {
        if (!file.second->close() && problem.empty()) {
            problem = file.second->problem();
        }
    }
}
