#include "commands/Commands.h"

#include "base/NearestName.h"
#include "base/Terminal.h"
#include "commands/CommonOptions.h"
#include "commands/OutputFile.h"
#include "commands/ReadingOptions.h"
#include "commands/export/SqliteOutput.h"
#include "export/CsvExport.h"
#include "export/JsonExport.h"

#include <filesystem>

namespace {

class ExportCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    void takeKindsWithRows(std::vector<const KindModel*>& kinds);
    void requireOneTable(const std::vector<const KindModel*>& kinds) const;
    ExitStatus writeJson(Host& host, const std::vector<const KindModel*>& kinds);
    ExitStatus writeDatabase(Host& host, const std::vector<const KindModel*>& kinds);
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
    bool withTimes = false;
    bool mixed = false;
    std::vector<std::string> fields;
    std::string rows;
    std::string separator = ",";
    std::string decimal = ".";
};

}    // namespace

void ExportCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("export", "Messages for other programs: JSON, CSV or SQLite");
    reading.declare(*app);
    app->add_option("-F,--format", format,
                    "ndjson (a JSON object a line), json (one array of them), csv (one table; "
                    "choose one kind with --type, or give a directory as output to get a file for "
                    "each kind, or --mixed) or sqlite (a database with tables for each kind; the "
                    "messages are added to what the file has)")
        ->check(CLI::IsMember({"ndjson", "json", "csv", "sqlite"}))
        ->capture_default_str();
    app->add_flag("--scaled", wantsScaled,
                  "Quantities in the place of the numbers that stand for them: PRC_m in metres, "
                  "Satellite by name, as 'rtcm2 describe' shows them");
    app->add_flag("--raw", wantsRaw,
                  "The numbers as they are in the message, as without this option; with --scaled "
                  "both, side by side, as databases have them without either");
    app->add_flag("-T,--texts", withTexts, "Also say what coded values mean");
    app->add_flag("-x,--hex", withHex, "Also show the packed message, in hexadecimal");
    declareTimes(*app, withTimes);
    app->add_option("--fields", fields,
                    "Only these fields or quantities, by name; those of sub-messages after a dot, "
                    "as in Corrections.PRC or Corrections.PRC_m")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("FIELD");
    app->add_option("--rows", rows,
                    "CSV: a row for each sub-message in this field, which repeats the fields of "
                    "the message; kinds without the field are left out, and so are sub-messages "
                    "that do not meet the condition of --where by themselves")
        ->type_name("SUBMESSAGES");
    app->add_flag("--mixed", mixed,
                  "CSV: several kinds in one output; where the kind changes, a blank line, a "
                  "comment with its name and its header line");
    app->add_option("--separator", separator,
                    "CSV: what stands between two cells; 'tab' for a tabulator")
        ->check(CLI::IsMember({",", ";", "|", "tab"}))
        ->capture_default_str();
    app->add_option("--decimal", decimal, "CSV: decimal sign")
        ->check(CLI::IsMember({".", ","}))
        ->capture_default_str();
    app->footer("docs/json.md describes what is written, docs/sqlite.md databases.\n\n"
                "Examples:\n"
                "    rtcm2 export capture.rtcm2 | jq .fields.Modified_Z_Count\n"
                "    rtcm2 export --format json --texts --hex -o capture.json capture.rtcm2\n"
                "    rtcm2 export --format csv -o tables/ capture.rtcm2\n"
                "    rtcm2 export --scaled capture.rtcm2 | jq .fields.Modified_Z_Count_s\n"
                "The corrections of each satellite over time, in seconds and metres:\n"
                "    rtcm2 export --format csv --type 1 --rows Corrections \\\n"
                "        --fields Modified_Z_Count_s,Corrections.Satellite,Corrections.PRC_m "
                "capture.rtcm2\n"
                "The same from a database:\n"
                "    rtcm2 export --format sqlite -o capture.db capture.rtcm2\n"
                "    sqlite3 capture.db 'SELECT time_s, Satellite, PRC_m FROM "
                "Message_Type_1_Corrections'");
}

ExitStatus ExportCommand::run(Host& host)
{
    try {
        const MessageFilter filter(host.model, reading.filter);
        checkNames(filter.kinds(), fields);
        if (format == "csv") {
            return writeCsv(host, filter);
        }
        if (!rows.empty() || mixed || app->count("--separator") + app->count("--decimal") > 0) {
            throw UsageError{"--rows, --mixed, --separator and --decimal are for --format csv" +
                             std::string(format == "sqlite"
                                             ? "; in a database sub-messages have tables of "
                                               "their own"
                                             : "")};
        }
        return format == "sqlite" ? writeDatabase(host, filter.kinds())
                                  : writeJson(host, filter.kinds());
    } catch (const FieldPathError& error) {
        throw UsageError{error.text};
    } catch (const FilterError& error) {
        throw UsageError{error.text};
    }
}

ExitStatus ExportCommand::writeJson(Host& host, const std::vector<const KindModel*>& kinds)
{
    const JsonOptions options{.asArray = format == "json",
                              .withTexts = withTexts,
                              .withHex = withHex,
                              .withInput = reading.inputs.size() > 1,
                              .withTimes = withTimes,
                              .fields = fields,
                              .values = values()};
    return runSession(host, reading, [&](Output& output, const MessageFilter&) {
        return std::make_unique<JsonExport>(output, options, kinds);
    });
}

ExitStatus ExportCommand::writeDatabase(Host& host, const std::vector<const KindModel*>& kinds)
{
    return exportToDatabase(host, reading,
                            {.program = "rtcm2 " RTCM2_VERSION,
                             .withPacked = withHex,
                             .fields = fields,
                             .values = wantsScaled == wantsRaw ? Values::both : values()},
                            kinds);
}

ExitStatus ExportCommand::writeCsv(Host& host, const MessageFilter& filter)
{
    std::vector<const KindModel*> tableKinds = filter.kinds();
    if (!rows.empty()) {
        takeKindsWithRows(tableKinds);
    }
    if (!wantsFiles() && !mixed) {
        requireOneTable(tableKinds);
    }
    CsvOptions options = csvOptions();
    options.filter = reading.filter.where.empty() ? nullptr : &filter;
    CsvTables tables = tablesFor(tableKinds, options);
    if (wantsFiles()) {
        return writeCsvFiles(host, tables);
    }
    return runSession(host, reading, [&](Output& output, const MessageFilter&) {
        return std::make_unique<CsvExport>(output, std::move(tables), withTimes);
    });
}

CsvOptions ExportCommand::csvOptions() const
{
    if (separator == decimal) {
        throw UsageError{"'" + separator +
                         "' cannot be both --separator and --decimal; with --decimal , take "
                         "--separator ';'"};
    }
    return {.separator = separator == "tab" ? '\t' : separator[0],
            .decimal = decimal[0],
            .isShown = goesToTerminal(reading.output),
            .withTexts = withTexts,
            .withHex = withHex,
            .withInput = reading.inputs.size() > 1,
            .fields = fields,
            .values = values(),
            .rows = rows};
}

ExitStatus ExportCommand::writeCsvFiles(Host& host, CsvTables& tables)
{
    if (mixed) {
        throw UsageError{"--mixed needs one output, and " + reading.output + " is a directory"};
    }
    ReadingOptions toFiles = reading;
    toFiles.output.clear();
    OutputFiles files(reading.output);
    const ExitStatus status = runSession(host, toFiles, [&](Output&, const MessageFilter&) {
        return std::make_unique<CsvFiles>(files, std::move(tables), withTimes);
    });
    if (isCutShort(status) && (files.count() == 0 || !reading.isLive())) {
        tell("nothing was written to " + reading.output);
        return status;
    }
    if (!files.close()) {
        tell(files.problem());
        return ExitStatus::unwritable;
    }
    return status;
}

void ExportCommand::takeKindsWithRows(std::vector<const KindModel*>& kinds)
{
    std::vector<std::string> names;
    std::erase_if(kinds, [&](const KindModel* kind) {
        for (const FieldModel& field : kind->fields) {
            if (field.element != nullptr) {
                names.push_back(field.name);
            }
        }
        const FieldModel* field = kind->field(rows);
        return field == nullptr || field->element == nullptr;
    });
    if (kinds.empty()) {
        const std::string meant = suggestion(nearestNames(rows, names));
        throw UsageError{"no chosen kind of message has sub-messages in a field '" + rows + "'" +
                         (meant.empty() ? "" : "; " + meant)};
    }
    reading.filter.kinds.clear();
    for (const KindModel* kind : kinds) {
        reading.filter.kinds.push_back(kind->name);
    }
}

void ExportCommand::requireOneTable(const std::vector<const KindModel*>& kinds) const
{
    if (kinds.size() != 1) {
        throw UsageError{"CSV is one table a kind: choose one kind with --type, or name a "
                         "directory as in --output tables/ to get a file for each kind, or take "
                         "all into one output with --mixed"};
    }
}

Values ExportCommand::values() const
{
    return !wantsScaled ? Values::raw : wantsRaw ? Values::both : Values::scaled;
}

bool ExportCommand::wantsFiles() const
{
    std::error_code unreadable;    // then it is no directory that could be written to
    return reading.output.ends_with('/') ||
           std::filesystem::is_directory(reading.output, unreadable);
}

std::unique_ptr<Command> exportCommand()
{
    return std::make_unique<ExportCommand>();
}
