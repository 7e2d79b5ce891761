// What people are told on standard error while the program works: lines of text and, where wanted,
// how far it has come.
#pragma once

#include "base/RecentRate.h"

#include <chrono>
#include <cstdint>
#include <string>

// How far the work has come is shown in the last line of the terminal, a few times a second at
// most; it is erased before anything else is told.
class Progress {
public:
    explicit Progress(bool isShown) : shown(isShown) {}
    ~Progress() { erase(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Work on an input begins. `size` is 0 when it is not known. Of a live one, what counts is what
    // came in the last seconds.
    void begin(const std::string& inputName, std::uint64_t inputSize, bool isInputLive);
    // So many of its bytes have been read.
    void advance(std::uint64_t bytes)
    {
        if (shown) {
            show(bytes);
        }
    }
    // Nothing has come for a moment.
    void wait() { advance(lastBytes); }
    // Takes what is shown off the screen.
    void erase();

    // A line to standard error, as Terminal.h tells it.
    void tell(const std::string& text);

private:
    using Clock = std::chrono::steady_clock;

    void show(std::uint64_t bytes);
    std::string text(Clock::time_point now) const;

    bool shown;
    bool visible = false;
    std::string name;
    std::uint64_t size = 0;
    bool isLive = false;
    std::uint64_t lastBytes = 0;
    RecentRate rate;
    Clock::time_point lastCame;
    Clock::time_point started;
    Clock::time_point nextTime;
};

// "45.2 MB of 100.0 MB (45 %), 52.3 MB/s, 1 s left"; without a known size (0) the bytes and the
// rate.
std::string progressText(std::uint64_t bytes, std::uint64_t size, double seconds);

// "45.2 kB, 52 B/s, silent for 3 s": of a live input, with its rate in the last seconds.
std::string liveProgressText(std::uint64_t bytes, double rate, double silence);
