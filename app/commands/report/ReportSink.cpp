#include "commands/report/ReportSink.h"

void ReportSink::beginInput(const std::string& name)
{
    input = std::make_unique<InputReport>(subject, name);
    watch =
        isLive ? std::make_unique<Watch>(input->check, shortestExpected(subject.wanted)) : nullptr;
}

void ReportSink::take(const Found& found)
{
    const bool isMessage =
        found.what != Found::What::damaged && found.what != Found::What::truncated;
    if (watch != nullptr && isMessage) {
        watch->noteMessage();
    }
    input->take(found);
}

void ReportSink::idle()
{
    if (watch != nullptr) {
        watch->look();
    }
}

void ReportSink::endOfInput(const std::string&, const ReaderCounters& counters)
{
    input->finish(counters);
    chapters.push_back(chapterOf(*input, chapters.size() + 1,
                                 watch != nullptr ? watch->age() : std::nullopt,
                                 chapters.size() < mostWithPictures));
    watch.reset();
    input.reset();
}

void ReportSink::finish()
{
    if (!chapters.empty()) {
        output << pageOf(chapters);
    }
}
