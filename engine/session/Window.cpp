#include "session/Window.h"

namespace {

constexpr std::int64_t mostBefore = 600'000'000;    // ten minutes

// The first time from `earliest` on that is so far behind the beginning of its hour or day.
std::int64_t firstFrom(std::int64_t earliest, const WindowBound& bound)
{
    const std::int64_t behind = (bound.value - earliest) % bound.period;
    return earliest + (behind < 0 ? behind + bound.period : behind);
}

}    // namespace

Window::Window(const FormatModel& model, const WindowOptions& windowOptions, bool isLive)
    : options(windowOptions), live(isLive), clock(model, windowOptions.date)
{
}

bool Window::takes(std::uint64_t number, const framing::Header* header, const Envelope& envelope)
{
    if (header != nullptr) {
        readTimes(*header, envelope);
    }
    past = isOver(number);
    return problemText.empty() && hasBegun(number) && !hasEnded(number);
}

void Window::readTimes(const framing::Header& header, const Envelope& envelope)
{
    if (uses(By::sent)) {
        const bool isFirst = !sent;
        sent = clock.read(header, envelope);
        if (isFirst && sent) {
            resolve(By::sent, *sent);
        }
    }
    if (uses(By::received) && envelope.received) {
        if (!received) {
            resolve(By::received, *envelope.received);
        }
        received = envelope.received;
    } else if (uses(By::received) && !received) {
        problemText = "its messages do not tell when they were received; with --date, --from and "
                      "--until are the times that messages carry";
    }
}

void Window::resolve(By by, std::int64_t first)
{
    WindowBound& from = options.from;
    WindowBound& until = options.until;
    if (from.by == by && from.period != 0) {
        from.value = firstFrom(first - mostBefore, from);
    }
    if (until.by == by && until.period != 0) {
        until.value = firstFrom((from.by == by ? from.value : first) + 1, until);
    }
}

bool Window::hasBegun(std::uint64_t number) const
{
    switch (options.from.by) {
    case By::nothing:
        return true;
    case By::number:
        return number >= static_cast<std::uint64_t>(options.from.value);
    default:
        return now(options.from.by) >= options.from.value;
    }
}

bool Window::hasEnded(std::uint64_t number) const
{
    switch (options.until.by) {
    case By::nothing:
        return false;
    case By::number:
        return number > static_cast<std::uint64_t>(options.until.value);
    default:
        return now(options.until.by) >= options.until.value;
    }
}

// Messages of different stations may be a little out of their order.
bool Window::isOver(std::uint64_t number) const
{
    switch (options.until.by) {
    case By::nothing:
        return false;
    case By::number:
        return number >= static_cast<std::uint64_t>(options.until.value);
    case By::sent:
        return sent && clock.earliestNext() >= options.until.value;
    case By::received:
        break;
    }
    return live && received >= options.until.value;
}
