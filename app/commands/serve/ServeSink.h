// Plays the messages of a session.
#pragma once

#include "commands/serve/Player.h"
#include "export/SenderDefaults.h"
#include "session/Sink.h"

// Who sends the messages.
struct Sending {
    SenderDefaults sender{};
    bool needsSender = false;           // to be sent at all
    std::uint64_t withoutSender = 0;    // messages that were left out
};

class ServeSink : public Sink {
public:
    using Announce = std::function<void(const std::string& input)>;

    // Everything given must outlive the sink, which counts what it leaves out. The inputs are those
    // of the session, the last of which may be followed at its end; `announceInput` hears of each
    // that begins, by the name that people may see.
    ServeSink(Player& hisPlayer, Sending& hisSending, const std::vector<std::string>& sessionInputs,
              bool followsLast, const Announce& announceInput)
        : player(hisPlayer), sending(hisSending), inputs(sessionInputs), follows(followsLast),
          announce(announceInput)
    {
    }

    void beginInput(const std::string& name) override;
    void take(const Found& found) override;
    bool isDone() const override;

private:
    Player& player;
    Sending& sending;
    const std::vector<std::string>& inputs;
    bool follows;
    const Announce& announce;
    std::size_t begun = 0;    // inputs
};
