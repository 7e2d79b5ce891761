// Plays the messages of a session.
#pragma once

#include "commands/serve/Player.h"
#include "session/Sink.h"

class ServeSink : public Sink {
public:
    // Everything given must outlive the sink. The inputs as the session gets them, and whether the
    // last one is waited for at its end.
    ServeSink(Player& hisPlayer, const std::vector<std::string>& sessionInputs, bool followsLast)
        : player(hisPlayer), inputs(sessionInputs), follows(followsLast)
    {
    }

    void beginInput(const std::string& name) override;
    void take(const Found& found) override;
    bool isDone() const override;

private:
    Player& player;
    const std::vector<std::string>& inputs;
    bool follows;
    std::size_t begun = 0;    // inputs
};
