#include "commands/export/CsvExport.h"

#include "base/Names.h"

#include <algorithm>
#include <filesystem>

Output& CsvFiles::of(const KindModel& kind)
{
    std::unique_ptr<Output>& file = files[&kind];
    if (file == nullptr) {
        std::error_code ignored;    // opening the file fails then, and says why
        std::filesystem::create_directories(directory, ignored);
        file = std::make_unique<Output>();
        const std::string name = identifierOf(kind.name) + ".csv";
        if (!file->open((std::filesystem::path(directory) / name).string())) {
            return *file;    // takes what is written, and stays failed
        }
    }
    return *file;
}

void CsvFiles::flush()
{
    for (const auto& file : files) {
        file.second->flush();
    }
}

bool CsvFiles::failed() const
{
    return std::any_of(files.begin(), files.end(),
                       [](const auto& file) { return file.second->failed(); });
}

bool CsvFiles::close(std::string& problem)
{
    for (const auto& file : files) {
        if (!file.second->close() && problem.empty()) {
            problem = file.second->problem();
        }
    }
    return problem.empty();
}

CsvExport::Tables CsvExport::tablesFor(const std::vector<const KindModel*>& kinds,
                                       const CsvOptions& options)
{
    Tables tables;
    for (const KindModel* kind : kinds) {
        tables.try_emplace(kind, *kind, options);
    }
    return tables;
}

CsvExport::CsvExport(Output& out, Tables kindTables) : output(&out), tables(std::move(kindTables))
{
    if (tables.size() == 1) {
        lastKind = tables.begin()->first;
        *output << tables.begin()->second.header();
    }
}

CsvExport::CsvExport(CsvFiles& kindFiles, Tables kindTables)
    : files(&kindFiles), tables(std::move(kindTables))
{
}

void CsvExport::message(const Place& place, const Decoded& decoded)
{
    CsvTable& table = tables.at(&decoded.kind);
    Output& target = outputFor(decoded.kind, table);
    rows.clear();
    table.appendRows(rows, place, decoded);
    target.write(rows);
}

void CsvExport::pause()
{
    output != nullptr ? output->flush() : files->flush();
}

bool CsvExport::isDone() const
{
    return output != nullptr ? output->failed() : files->failed();
}

Output& CsvExport::outputFor(const KindModel& kind, const CsvTable& table)
{
    if (output != nullptr) {
        if (&kind != lastKind) {
            beginPart(kind, table);
        }
        return *output;
    }
    Output*& file = begun[&kind];
    if (file == nullptr) {
        file = &files->of(kind);
        *file << table.header();
    }
    return *file;
}

void CsvExport::beginPart(const KindModel& kind, const CsvTable& table)
{
    *output << (lastKind == nullptr ? "# " : "\n# ") << kind.name << "\n" << table.header();
    lastKind = &kind;
}
