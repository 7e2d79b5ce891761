#include "commands/serve/ServeSink.h"

#include "base/Interrupt.h"
#include "sources/Sources.h"

void ServeSink::beginInput(const std::string&)
{
    const std::string& input = inputs[begun++];
    player.beginInput(isLiveInput(input) || (follows && begun == inputs.size()));
}

void ServeSink::take(const Found& found)
{
    if (counts(found)) {
        player.play(found);
    }
}

// A batch of messages may take an hour.
bool ServeSink::isDone() const
{
    return interrupt::requested();
}
