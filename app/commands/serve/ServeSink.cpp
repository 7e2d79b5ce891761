#include "commands/serve/ServeSink.h"

#include "base/Interrupt.h"
#include "sources/Sources.h"

void ServeSink::beginInput(const std::string& name)
{
    announce(name);
    const std::string& input = inputs[begun++];
    const bool isFollowed = follows && begun == inputs.size();
    player.beginInput(isFollowed || isLiveInput(input));
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
