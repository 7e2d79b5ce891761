#include "viewer/plots/TimeWindow.h"

#include <algorithm>

void TimeWindow::setWhole(const Range& wanted)
{
    const Range before = all;
    all = {wanted.low, std::max(wanted.high, wanted.low + shortest)};
    if (isKnown && before.low == all.low && before.high == all.high) {
        return;
    }
    isKnown = true;
    if (isAll) {
        part = all;
    }
    Q_EMIT shownChanged();
}

void TimeWindow::show(const Range& wanted)
{
    const double length = std::clamp(wanted.length(), shortest, all.length());
    const double middle = (wanted.low + wanted.high) / 2;
    const double low = std::clamp(middle - length / 2, all.low, all.high - length);
    const Range next{low, low + length};
    isAll = length >= all.length();
    if (next.low != part.low || next.high != part.high) {
        part = next;
        Q_EMIT shownChanged();
    }
}

void TimeWindow::showAll()
{
    show(all);
}

void TimeWindow::zoom(double factor, double around)
{
    const double fixed = std::clamp(around, part.low, part.high);
    const double length = std::clamp(part.length() * factor, shortest, all.length());
    const double low = fixed - part.share(fixed) * length;
    show({low, low + length});
}

void TimeWindow::move(double seconds)
{
    const double low =
        std::clamp(part.low + seconds, all.low, std::max(all.low, all.high - part.length()));
    show({low, low + part.length()});
}

void TimeWindow::reveal(double seconds)
{
    if (seconds < part.low || seconds > part.high) {
        move(seconds - (part.low + part.high) / 2);
    }
}

void TimeWindow::setChosen(std::optional<double> seconds)
{
    chosenTime = seconds;
    Q_EMIT marksChanged();
}

void TimeWindow::setStretch(const std::optional<Stretch>& wanted)
{
    marked = wanted;
    Q_EMIT marksChanged();
}

// Compiled here instead of on its own.
#include "moc_TimeWindow.cpp"
