#include "commands/serve/Player.h"

#include "base/Interrupt.h"
#include "commands/serve/Server.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <thread>

namespace {

constexpr double usualPause = 1;    // seconds, where the recording's own is not known or too long

std::string withSeconds(const Found& found, const char* before, double seconds, const char* after)
{
    std::array<char, 40> number{};
    std::snprintf(number.data(), number.size(), "%.1f s", seconds);
    return "message " + std::to_string(found.number) + ": " + before + number.data() + after;
}

}    // namespace

Player::Player(const FormatModel& formatModel, Server& playedTo, const PlayOptions& playOptions,
               Tell tellLine)
    : model(formatModel), server(playedTo), options(playOptions), tell(std::move(tellLine)),
      awaitsClient(!options.beginsAtOnce)
{
}

void Player::beginInput(bool isLiveInput)
{
    isLive = isLiveInput;
    clock.emplace(model);
    last.reset();
}

void Player::beginAgain()
{
    awaitsClient = awaitsClient || options.speed == 0;
    tell = [](const std::string&) {};
}

void Player::play(const Found& found, const Envelope& sent)
{
    if (!isLive) {
        waitForTurn(found);
    }
    if (interrupt::requested()) {
        return;
    }
    bool hasRoom = server.send(found.bytes, sent) || isLive || options.speed > 0;
    while (!hasRoom && !interrupt::requested()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        hasRoom = server.keepUp();
    }
    hasPlayed = true;
}

void Player::waitForTurn(const Found& found)
{
    if (awaitsClient) {
        waitForClient();
    }
    if (options.speed > 0) {
        sleepFor(pauseBefore(found));
    }
}

void Player::waitForClient()
{
    while (!server.isAnybodyThere() && !interrupt::requested()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    awaitsClient = false;
}

// In seconds of the recording. One recording follows the other after a moment.
double Player::pauseBefore(const Found& found)
{
    const MessageClock::Reading reading = clock->read(found);
    const double pause = last ? reading.seconds - *last : hasPlayed ? usualPause : 0;
    last = reading.seconds;
    if (reading.back > 0) {
        tell(withSeconds(found, "the time goes back by ", reading.back,
                         "; it is played on without a pause"));
    }
    if (pause <= std::max(options.longestPause, usualPause)) {
        return pause;
    }
    tell(withSeconds(found, "a pause of ", pause, " before it is shortened to 1 s"));
    return usualPause;
}

// In seconds of the recording. What is a little late makes up for that, so that errors do not add
// up; after a long delay, as when the program was stopped for a while, time goes on from there.
void Player::sleepFor(double pause)
{
    constexpr std::chrono::seconds mostBehind{2};
    constexpr Clock::duration slice = std::chrono::milliseconds(100);    // Ctrl-C is seen after it
    const std::chrono::duration<double> step(pause / options.speed);
    const Clock::time_point now = Clock::now();
    due = now > due + mostBehind ? now : due + std::chrono::duration_cast<Clock::duration>(step);
    while (Clock::now() < due && !interrupt::requested()) {
        std::this_thread::sleep_for(std::min(due - Clock::now(), slice));
    }
}
