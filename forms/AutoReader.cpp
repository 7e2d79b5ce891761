#include "forms/AutoReader.h"

#include <algorithm>
#include <cassert>

namespace {

constexpr std::size_t longestTrial = 1 << 14;

// As many messages in a row, each but for the preamble of the next no better than chance, are no
// accident.
constexpr unsigned sureRun = 4;

bool hasStreamForm(std::uint8_t byte)
{
    return (byte & 0xC0) == 0x40;
}

}    // namespace

struct AutoReader::Trial {
    InputForm form;
    std::unique_ptr<PacketReader> reader = makeReader(form);
    unsigned run = 0;    // good messages since the last trouble
    unsigned longestRun = 0;
    bool isFlawless = true;     // no trouble so far
    bool beginsWell = false;    // the first thing found was a good message

    // Whether the form has parity or another way to be sure of a single message.
    bool vouches() const { return form == InputForm::stream || form == InputForm::hex; }
};

AutoReader::AutoReader()
{
    for (const InputForm form :
         {InputForm::hex, InputForm::stream, InputForm::packed, InputForm::words}) {
        trials.push_back({.form = form});
    }
}

AutoReader::~AutoReader() = default;

void AutoReader::push(std::span<const std::uint8_t> bytes)
{
    assert(pending.empty() && "bytes pushed before are still unread");
    pending = bytes;
}

void AutoReader::finish()
{
    finished = true;
    if (chosen && pending.empty()) {
        chosen->finish();
    }
}

const framing::Frame* AutoReader::next()
{
    while (!chosen && !pending.empty()) {
        tryNextByte();
    }
    if (!chosen && finished) {
        for (Trial& trial : trials) {
            trial.reader->finish();
            drain(trial);
        }
        decide(likeliestForm());
    }
    if (!chosen) {
        return nullptr;
    }
    const framing::Frame* frame = chosen->next();
    if (frame == nullptr && !pending.empty()) {
        // What was seen has been read, or had been before.
        seen = {};
        chosen->push(pending);
        pending = {};
        if (finished) {
            chosen->finish();
        }
        frame = chosen->next();
    }
    return frame;
}

std::span<const std::uint8_t> AutoReader::recorded() const
{
    return chosen ? chosen->recorded() : std::span<const std::uint8_t>();
}

ReaderCounters AutoReader::counters() const
{
    ReaderCounters counters;
    if (chosen) {
        counters = chosen->counters();
    } else {
        counters.bytesRead = seen.size();
    }
    counters.bytesRead += pending.size();
    return counters;
}

// Byte by byte, so that the outcome does not depend on how many come at once.
void AutoReader::tryNextByte()
{
    seen.push_back(pending.front());
    const std::span<const std::uint8_t> byte = pending.first(1);
    pending = pending.subspan(1);
    streamBytes += hasStreamForm(byte[0]) ? 1 : 0;
    for (Trial& trial : trials) {
        trial.reader->push(byte);
        drain(trial);
    }
    const auto certain = std::find_if(trials.begin(), trials.end(),
                                      [this](const Trial& trial) { return isCertain(trial); });
    if (certain != trials.end()) {
        decide(certain->form);
    } else if (seen.size() == longestTrial) {
        decide(likeliestForm());
    }
}

void AutoReader::drain(Trial& trial)
{
    while (const framing::Frame* frame = trial.reader->next()) {
        if (frame->kind == framing::Frame::Kind::message) {
            ++trial.run;
            trial.beginsWell = trial.beginsWell || trial.isFlawless;
            trial.longestRun = std::max(trial.longestRun, trial.run);
        } else {
            trial.run = 0;
            trial.isFlawless = false;
        }
    }
}

bool AutoReader::isCertain(const Trial& trial) const
{
    if (trial.vouches() || trial.run == 0) {
        return trial.run > 0;
    }
    // Binary forms know a message by its preamble alone, and the words of one of them may happen to
    // have it when read as the other.
    const bool hasRival = std::any_of(trials.begin(), trials.end(), [&](const Trial& other) {
        return &other != &trial && !other.vouches() && other.isFlawless;
    });
    return trial.run >= (trial.isFlawless && !hasRival && !mayBeStream(trial) ? 1 : sureRun);
}

// The first bytes of a stream are a packed preamble as well. No unit of a recording that has the
// preamble consists of a stream's bytes.
bool AutoReader::mayBeStream(const Trial& trial) const
{
    return trial.form == InputForm::packed && 2 * streamBytes > seen.size();
}

InputForm AutoReader::likeliestForm() const
{
    const Trial* best = nullptr;
    for (const Trial& trial : trials) {
        const unsigned found = trial.longestRun;
        if (found >= messagesNeeded(trial) && (best == nullptr || found > best->longestRun)) {
            best = &trial;
        }
    }
    return best != nullptr ? best->form : InputForm::stream;
}

// How many messages in a row a form needs to be the likeliest one when nothing was certain.
unsigned AutoReader::messagesNeeded(const Trial& trial) const
{
    if (trial.vouches() || trial.isFlawless) {
        return 1;
    }
    if (mayBeStream(trial)) {
        return sureRun;
    }
    return trial.beginsWell ? 1 : 2;
}

void AutoReader::decide(InputForm form)
{
    chosen = makeReader(form);
    chosen->push(seen);
    if (finished && pending.empty()) {
        chosen->finish();
    }
    trials.clear();
}
