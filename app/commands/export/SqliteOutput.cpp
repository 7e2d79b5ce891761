#include "commands/export/SqliteOutput.h"

#include "base/Interrupt.h"
#include "base/Terminal.h"
#include "commands/Command.h"
#include "commands/OutputFile.h"
#include "export/SqliteExport.h"

#include <filesystem>
#include <new>

namespace {

void requireFile(const std::string& name)
{
    if (name.empty() || name == "-") {
        throw UsageError{"a database cannot be printed: name its file with --output, as in "
                         "--output messages.db"};
    }
    std::error_code missing;    // then it will be made
    const auto status = std::filesystem::status(name, missing);
    if (name.back() == '/' || std::filesystem::is_directory(status)) {
        throw UsageError{"a database is one file, and " + name + " is a directory"};
    }
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        throw UsageError{"a database has to be a file, and " + name +
                         " is a pipe or another device"};
    }
}

bool isKept(const SqliteFile& file, ExitStatus status)
{
    return !isCutShort(status) || file.isLive();
}

ExitStatus readInto(SqliteFile& file, Host& host, const ReadingOptions& reading,
                    const SqliteOptions& options, const std::vector<const KindModel*>& kinds)
{
    SqliteWriter writer(file, host.model, kinds, options);
    if (file.isLive()) {
        file.letOthersRead();
    }
    std::optional<SqliteError> failure;
    ReadingOptions withoutOutput = reading;
    withoutOutput.output.clear();
    const ExitStatus status = runSession(host, withoutOutput, [&](Output&, const MessageFilter&) {
        return std::make_unique<SqliteExport>(file, writer, failure);
    });
    if (failure) {
        throw SqliteError(*failure);
    }
    if (isKept(file, status)) {
        if (!file.isLive()) {
            file.database().heedInterrupts();
        }
        writer.finish();
    }
    return status;
}

ExitStatus giveUp(SqliteFile& file, ExitStatus status)
{
    file.giveUp();
    tell("nothing was written to " + file.fileName());
    return status;
}

}    // namespace

ExitStatus exportToDatabase(Host& host, const ReadingOptions& reading, const SqliteOptions& options,
                            const std::vector<const KindModel*>& kinds)
{
    requireFile(reading.output);
    requireOtherOutput(reading.inputs, reading.output);
    SqliteFile file(reading.output, reading.isLive());
    try {
        file.open();
        const ExitStatus status = readInto(file, host, reading, options, kinds);
        if (!isKept(file, status)) {
            return giveUp(file, status);
        }
        file.keep();
        return status;
    } catch (const SqliteError& error) {
        if (interrupt::requested() && !file.isLive()) {
            return giveUp(file, ExitStatus::interrupted);
        }
        file.giveUp();
        tell(error.text);
        return ExitStatus::unwritable;
    } catch (const std::bad_alloc&) {
        file.giveUp();
        throw;
    }
}
