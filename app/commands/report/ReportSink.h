// Collects what reports tell of inputs and writes the page at the end of everything.
#pragma once

#include "base/Output.h"
#include "commands/check/Watch.h"
#include "commands/report/InputReport.h"
#include "commands/report/ReportPage.h"
#include "session/Sink.h"

#include <memory>

class ReportSink : public Sink {
public:
    // What is given must outlive the sink. `comesLive`: in its own time.
    ReportSink(Output& out, const ReportSubject& reportSubject, bool comesLive)
        : output(out), subject(reportSubject), isLive(comesLive)
    {
    }

    void beginInput(const std::string& name) override;
    void take(const Found& found) override;
    void idle() override;
    void endOfInput(const std::string& name, const ReaderCounters& counters) override;
    void finish() override;
    bool isDone() const override { return output.failed(); }
    bool writesAlong() const override { return false; }

private:
    static constexpr std::size_t mostWithPictures = 32;

    Output& output;
    const ReportSubject& subject;
    bool isLive;
    std::unique_ptr<InputReport> input;
    std::unique_ptr<Watch> watch;
    std::vector<Chapter> chapters;
};
