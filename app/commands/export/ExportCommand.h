#pragma once

#include "commands/Command.h"
#include "commands/ReadingOptions.h"
#include "commands/export/CsvExport.h"

class ExportCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    void takeKindsWithRows(std::vector<const KindModel*>& kinds);
    void requireOneTable(const std::vector<const KindModel*>& kinds) const;
    ExitStatus writeJson(Host& host, const std::vector<const KindModel*>& kinds);
    ExitStatus writeCsv(Host& host, const MessageFilter& filter);
    ExitStatus writeCsvFiles(Host& host, CsvTables& tables);
    CsvOptions csvOptions() const;
    bool wantsFiles() const;
    Values values() const;

    ReadingOptions reading;
    std::string format = "ndjson";
    bool wantsScaled = false;
    bool wantsRaw = false;
    bool withTexts = false;
    bool withHex = false;
    bool mixed = false;
    std::vector<std::string> fields;
    std::string rows;
    std::string separator = ",";
    std::string decimal = ".";
};
