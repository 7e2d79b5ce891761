#include "base/Progress.h"

#include "base/Terminal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds firstAfter{500};
constexpr std::chrono::milliseconds interval{200};
constexpr const char* eraseLine = "\r\033[K";

std::string amountText(double bytes)
{
    constexpr std::array<const char*, 5> units = {"B", "kB", "MB", "GB", "TB"};
    std::size_t unit = 0;
    for (; bytes >= 999.95 && unit + 1 < units.size(); ++unit) {
        bytes /= 1000;
    }
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), unit == 0 ? "%.0f %s" : "%.1f %s", bytes, units[unit]);
    return text.data();
}

std::string durationText(double seconds)
{
    const auto whole = static_cast<std::uint64_t>(std::ceil(seconds));
    if (whole < 60) {
        return std::to_string(whole) + " s";
    }
    if (whole < 3600) {
        return std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
    }
    return std::to_string(whole / 3600) + " h " + std::to_string(whole % 3600 / 60) + " min";
}

// Columns of the terminal that a line can use without wrapping.
std::size_t columns()
{
    const std::size_t known = columnsOf(STDERR_FILENO);
    return (known > 1 ? known : 80) - 1;
}

}    // namespace

void Progress::begin(const std::string& inputName, std::uint64_t inputSize, bool isInputLive)
{
    isLive = isInputLive;
    lastBytes = 0;
    name = printable(inputName);
    size = inputSize;
    started = Clock::now();
    lastCame = started;
    rate = {};
    nextTime = started + firstAfter;
}

void Progress::show(std::uint64_t bytes)
{
    const Clock::time_point now = Clock::now();
    if (isLive && bytes != lastBytes) {
        rate.add(now, bytes - lastBytes);
        lastCame = now;
    }
    lastBytes = bytes;
    if (now < nextTime) {
        return;
    }
    nextTime = now + interval;
    std::string line = text(now);
    if (line.size() + 2 + name.size() <= columns()) {
        line += "  " + name;
    }
    line.resize(std::min(line.size(), columns()));
    std::fprintf(stderr, "%s%s", eraseLine, line.c_str());
    std::fflush(stderr);
    visible = true;
}

std::string Progress::text(Clock::time_point now) const
{
    const auto since = [now](Clock::time_point then) {
        return std::chrono::duration<double>(now - then).count();
    };
    return isLive ? liveProgressText(lastBytes, rate.perSecond(now), since(lastCame))
                  : progressText(lastBytes, size, since(started));
}

void Progress::erase()
{
    if (visible) {
        std::fputs(eraseLine, stderr);
        std::fflush(stderr);
        visible = false;
    }
}

void Progress::tell(const std::string& text)
{
    erase();
    ::tell(text);
}

std::string progressText(std::uint64_t bytes, std::uint64_t size, double seconds)
{
    const double done = static_cast<double>(bytes);
    const double rate = seconds > 0 ? done / seconds : 0;
    std::string text = amountText(done);
    if (size > 0) {
        const double whole = static_cast<double>(size);
        const double part = std::min(done / whole, 1.0);
        text += " of " + amountText(whole) + " (" + std::to_string(static_cast<int>(part * 100)) +
                " %)";
    }
    text += ", " + amountText(rate) + "/s";
    if (size >= bytes && size > 0 && rate > 0) {
        text += ", " + durationText(static_cast<double>(size - bytes) / rate) + " left";
    }
    return text;
}

std::string liveProgressText(std::uint64_t bytes, double rate, double silence)
{
    const std::string text =
        amountText(static_cast<double>(bytes)) + ", " + amountText(rate) + "/s";
    constexpr double toldSilence = 2;
    return silence < toldSilence
               ? text
               : text + (bytes == 0 ? ", waiting for " : ", silent for ") + durationText(silence);
}
