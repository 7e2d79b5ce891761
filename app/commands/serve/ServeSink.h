// Plays the messages of a session.
#pragma once

#include "commands/serve/Player.h"
#include "session/Sink.h"

class ServeSink : public Sink {
public:
    // Everything given must outlive the sink. The inputs as the session gets them.
    ServeSink(Player& hisPlayer, const std::vector<std::string>& sessionInputs)
        : player(hisPlayer), inputs(sessionInputs)
    {
    }

    void beginInput(const std::string& name) override;
    void take(const Found& found) override;
    bool isDone() const override;

private:
    Player& player;
    const std::vector<std::string>& inputs;
    std::size_t begun = 0;    // inputs
};
