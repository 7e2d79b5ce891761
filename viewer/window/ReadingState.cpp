#include "viewer/window/ReadingState.h"

#include "base/Progress.h"

#include <QLocale>

#include <algorithm>

namespace {

int percent(std::uint64_t done, std::uint64_t whole)
{
    return whole == 0 ? -1 : static_cast<int>(std::min<std::uint64_t>(100 * done / whole, 100));
}

}    // namespace

QString grouped(qulonglong number)
{
    return QLocale(QLocale::English).toString(number);
}

ReadingState::ReadingState(const Document& read, const Readings& again)
    : document(read), readings(again)
{
    clock.start();
}

void ReadingState::measure()
{
    const std::uint64_t bytes = document.bytesRead();
    if (bytes != lastBytes) {
        lastCame = RecentRate::Clock::now();
        rate.add(lastCame, bytes - lastBytes);
        lastBytes = bytes;
    }
}

bool ReadingState::isWorking() const
{
    return document.isReading() || readings.isFiltering() || readings.isSearching();
}

QString ReadingState::text(bool isPaused, std::size_t held) const
{
    if (document.comesSlowly() && document.isReading()) {
        return isPaused ? QStringLiteral("paused, and %1 more have come").arg(grouped(held))
                        : liveText();
    }
    if (document.isReading()) {
        const double seconds = static_cast<double>(clock.elapsed()) / 1000;
        return QStringLiteral("reading ") +
               QString::fromStdString(progressText(document.bytesRead(), document.size(), seconds));
    }
    return readings.isSearching()   ? QStringLiteral("searching")
           : readings.isFiltering() ? QStringLiteral("filtering")
                                    : QString();
}

QString ReadingState::liveText() const
{
    const RecentRate::Clock::time_point now = RecentRate::Clock::now();
    return QString::fromStdString(
        liveProgressText(document.bytesRead(), rate.perSecond(now),
                         std::chrono::duration<double>(now - lastCame).count()));
}

int ReadingState::progress() const
{
    if (readings.isSearching()) {
        return percent(readings.messagesSearched(), document.index().size());
    }
    if (document.comesSlowly()) {
        return -1;
    }
    if (readings.isFiltering()) {
        return percent(readings.bytesFiltered(), document.size());
    }
    return document.isReading() ? percent(document.bytesRead(), document.size()) : -1;
}

QString ReadingState::counts(int rows) const
{
    const std::uint64_t all = document.index().size();
    const std::uint64_t troubles = std::min(document.troubles(), all);
    QString text = QStringLiteral("%1 messages").arg(grouped(all - troubles));
    if (troubles != 0) {
        text += QStringLiteral(", %1 damaged").arg(grouped(troubles));
    }
    return readings.chosen() == nullptr
               ? text
               : QStringLiteral("%1 shown of ").arg(grouped(static_cast<qulonglong>(rows))) + text;
}
