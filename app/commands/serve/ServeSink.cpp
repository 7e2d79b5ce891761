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
    if (!counts(found)) {
        return;
    }
    Envelope sent = *found.envelope;
    sent.sender = sending.sender.complete(sent.sender);
    sent.received.reset();
    if (sending.needsSender && !sent.sender) {
        ++sending.withoutSender;
    } else {
        player.play(found, sent);
    }
}

// A batch of messages may take an hour.
bool ServeSink::isDone() const
{
    return interrupt::requested();
}
