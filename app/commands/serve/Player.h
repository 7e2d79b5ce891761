// Sends messages when they are due.
#pragma once

#include "commands/serve/MessageClock.h"
#include "session/Found.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

class Server;

struct PlayOptions {
    double speed = 1;             // 0: as fast as clients take it
    bool beginsAtOnce = false;    // else with the first client
    double longestPause = 60;     // seconds of the recording; longer ones are shortened
};

class Player {
public:
    using Tell = std::function<void(const std::string& line)>;

    // Everything given must outlive the player.
    Player(const FormatModel& formatModel, Server& playedTo, const PlayOptions& playOptions,
           Tell tellLine);

    // Of an input whose messages come in their own time, each is sent at once.
    void beginInput(bool isLiveInput);
    // A message, known or not, to be sent with the envelope. Returns when it was handed to the
    // server, or the program is asked to end.
    void play(const Found& found, const Envelope& sent);
    // All inputs were played and begin again. What is odd about them was told.
    void beginAgain();

private:
    using Clock = std::chrono::steady_clock;

    void waitForTurn(const Found& found);
    void waitForClient();
    double pauseBefore(const Found& found);
    void sleepFor(double pause);

    const FormatModel& model;
    Server& server;
    const PlayOptions& options;
    Tell tell;
    Clock::time_point due{};              // the message before
    std::optional<MessageClock> clock;    // of the input
    std::optional<double> last;           // seconds of the message before in the input
    bool isLive = false;
    bool awaitsClient;
    bool hasPlayed = false;
};
