#include "commands/check/CheckSink.h"

#include "base/Terminal.h"
#include "commands/check/CheckJson.h"
#include "commands/check/CheckText.h"

CheckSink::CheckSink(Output& out, const FormatModel& model, const Wanted& wantedOfIt,
                     CheckReport& result)
    : output(out), format(model), wanted(wantedOfIt), report(result)
{
    json.beginObject();
    json.beginArray("inputs");
}

void CheckSink::beginInput(const std::string& name)
{
    InputCheck::Tell tellNow;
    if (report.isWatch && !report.isJson) {
        tellNow = [this](const Finding& problem) { output << lineOf(problem) << "\n"; };
    }
    check = std::make_unique<InputCheck>(format, wanted, tellNow);
    check->name = name;
    watch = report.isWatch ? std::make_unique<Watch>(*check, shortestExpected(wanted)) : nullptr;
}

void CheckSink::take(const Found& found)
{
    const bool isMessage =
        found.what != Found::What::damaged && found.what != Found::What::truncated;
    if (watch != nullptr && isMessage) {
        watch->noteMessage();
    }
    check->take(found);
}

void CheckSink::idle()
{
    if (watch != nullptr) {
        watch->look();
        output.flush();
    }
}

void CheckSink::endOfInput(const std::string&, const ReaderCounters&)
{
    check->finish();
    const std::optional<double> age = watch != nullptr ? watch->age() : std::nullopt;
    const Severity worst = check->findings.worst();
    ++inputs;
    goodInputs += worst == Severity::good && check->messages > 0 ? 1 : 0;
    report.verdict = std::max(report.verdict, worst);
    report.messages += check->messages;
    if (report.isJson) {
        writeJson(json, *check, age);
        output << json.take();
    } else {
        texts += (texts.empty() ? "" : "\n") + checkText(*check, age);
    }
}

std::string CheckSink::totalText() const
{
    if (inputs < 2) {
        return "";
    }
    return std::string(verdictText(report.verdict, report.messages)) + ": " +
           std::to_string(goodInputs) + " of " + std::to_string(inputs) + " inputs are good, " +
           std::to_string(report.messages) + " messages\n\n";
}

void CheckSink::finish()
{
    if (!report.isJson) {
        output << totalText() << texts;
        return;
    }
    json.endArray();
    json.member("verdict", verdictText(report.verdict, report.messages));
    json.member("messages", report.messages);
    json.endObject();
    output << json.take();
}
