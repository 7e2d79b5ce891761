#include "viewer/document/ExportJob.h"

#include "export/CopySink.h"
#include "export/CsvExport.h"
#include "export/JsonExport.h"
#include "export/SqliteExport.h"
#include "plugin/Decoding.h"
#include "session/SwitchKinds.h"

#include <new>

namespace {

constexpr auto cancelled = "cancelled";

// Counts what another sink takes.
class CountingSink : public Sink {
public:
    CountingSink(Sink& behind, std::uint64_t& counter) : sink(behind), count(counter) {}

    void take(const Found& found) override
    {
        count += sink.counts(found) ? 1 : 0;
        sink.take(found);
    }
    void beginInput(const std::string& name) override { sink.beginInput(name); }
    void endOfInput(const std::string& name, const ReaderCounters& counters) override
    {
        sink.endOfInput(name, counters);
    }
    void finish() override { sink.finish(); }
    bool isDone() const override { return sink.isDone(); }

private:
    Sink& sink;
    std::uint64_t& count;
};

InputForm formOf(ExportForm form)
{
    return form == ExportForm::packed ? InputForm::packed
           : form == ExportForm::hex  ? InputForm::hex
                                      : InputForm::stream;
}

}    // namespace

ExportJob::ExportJob(const FormatModel& model, const Input& file, Options wanted)
    : formatModel(model), input(file), options(std::move(wanted)),
      filter(model, {.where = options.where})
{
    pass.begin([this] { work(); });
}

void ExportJob::work()
try {
    switch (options.form) {
    case ExportForm::csv:
        return writeTables();
    case ExportForm::sqlite:
        return writeDatabase();
    default:
        return writeFile();
    }
} catch (const SqliteError& error) {
    problemText = error.text;
} catch (const std::bad_alloc&) {
    problemText = "not enough memory";
}

// False where it was cancelled or could not be read to its end.
bool ExportJob::run(Sink& sink)
{
    Decoding decoding;
    switchKinds(*decoding.decoder, formatModel, filter);
    Session session(formatModel, decoding.driver, filter, {.form = input.form});
    SessionOptions reading{.onError = OnError::skip, .quiet = true, .mode = input.mode};
    reading.tell = [this](const std::string& text) { problemText = text; };
    reading.isAskedToEnd = [this] { return pass.isAskedToEnd(); };
    reading.keep = [this](std::span<const std::uint8_t> some) { bytes += some.size(); };
    CountingSink counting(sink, written);
    session.run({input.name}, reading, counting);
    if (pass.isAskedToEnd()) {
        problemText = cancelled;
    }
    return problemText.empty();
}

std::unique_ptr<Sink> ExportJob::sinkInto(Output& output) const
{
    const bool isJson = options.form == ExportForm::json;
    if (isJson || options.form == ExportForm::ndjson) {
        return std::make_unique<JsonExport>(
            output, JsonOptions{.asArray = isJson, .values = options.values}, filter.kinds());
    }
    return std::make_unique<CopySink>(output, CopyOptions{.form = formOf(options.form)});
}

void ExportJob::writeFile()
{
    Output output;
    if (!output.open(options.path)) {
        problemText = output.problem();
        return;
    }
    const std::unique_ptr<Sink> sink = sinkInto(output);
    if (!run(*sink)) {
        output.discard();
    } else if (!output.close()) {
        problemText = output.problem();
    }
}

void ExportJob::writeTables()
{
    const CsvOptions csv{.values = options.values};
    OutputFiles files(options.path);
    CsvFiles sink(files, tablesFor(filter.kinds(), csv), false);
    if (run(sink) && !files.close()) {
        problemText = files.problem();
    }
}

void ExportJob::writeDatabase()
{
    SqliteFile file(options.path, false);
    try {
        file.open();
        std::optional<SqliteError> failure;
        {
            SqliteWriter writer(file, formatModel, filter.kinds(),
                                {.program = options.program, .values = options.values});
            SqliteExport sink(file, writer, failure);
            if (run(sink) && !failure) {
                writer.finish();
            }
        }
        if (failure) {
            throw SqliteError(*failure);
        }
        problemText.empty() ? file.keep() : file.giveUp();
    } catch (...) {
        file.giveUp();
        throw;
    }
}
