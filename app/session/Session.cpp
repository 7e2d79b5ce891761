#include "session/Session.h"

#include "Message.h"
#include "base/InputFile.h"
#include "base/Interrupt.h"
#include "filter/MessageFilter.h"

const char* nameOf(Trouble trouble)
{
    switch (trouble) {
    case Trouble::damaged:
        return "damaged message";
    case Trouble::truncated:
        return "truncated message";
    case Trouble::unknownType:
        return "unknown type";
    case Trouble::misfit:
        return "content does not fit";
    }
    return "trouble";
}

Session::Session(const FormatModel& model, DecoderDriver& driver,
                 const MessageFilter& messageFilter, ReaderFactory makeReader)
    : formatModel(model), decoderDriver(driver), filter(messageFilter),
      readerFactory(std::move(makeReader))
{
}

ExitStatus Session::run(const std::vector<std::string>& inputs,
                        const SessionOptions& sessionOptions, Sink& target)
{
    options = sessionOptions;
    sink = &target;
    bool allReadable = true;
    for (const std::string& name : inputs) {
        InputFile input(name);
        progress = std::make_unique<Progress>(options.showsProgress && !input.isTyped());
        readInput(input);
        if (!input.problem().empty()) {
            progress->tell(input.problem());
            allReadable = false;
        }
        if (isDone() || interrupt::requested()) {
            break;
        }
    }
    progress.reset();
    sink->finish();
    return statusOfEnd(allReadable);
}

ExitStatus Session::statusOfEnd(bool allReadable) const
{
    if (stopped) {
        return ExitStatus::stoppedAtTrouble;
    }
    if (interrupt::requested()) {
        return ExitStatus::interrupted;
    }
    if (!allReadable) {
        return ExitStatus::unreadable;
    }
    return found == 0 ? ExitStatus::nothingFound : ExitStatus::success;
}

void Session::readInput(InputFile& input)
{
    const std::unique_ptr<PacketReader> reader = readerFactory();
    progress->begin(input.name(), input.size());
    readBytes(input, *reader);
    // An input that was left early does not end here: what is incomplete is not truncated.
    if (!interrupt::requested()) {
        reader->finish();
        drain(*reader, input.name());
    }
    progress->erase();
    const ReaderCounters counters = reader->counters();
    if (input.problem().empty() || counters.bytesRead > 0) {
        sink->endOfInput(input.name(), counters);
    }
}

void Session::readBytes(InputFile& input, PacketReader& reader)
{
    std::uint64_t bytesRead = 0;
    while (!isDone()) {
        const std::span<const std::uint8_t> bytes = input.read();
        if (bytes.empty()) {
            return;
        }
        bytesRead += bytes.size();
        reader.push(bytes);
        drain(reader, input.name());
        if (input.isLive()) {
            sink->pause();
        }
        progress->advance(bytesRead);
    }
}

void Session::drain(PacketReader& reader, const std::string& name)
{
    while (!isDone()) {
        const framing::Frame* frame = reader.next();
        if (frame == nullptr) {
            return;
        }
        const Place place{name, *frame};
        switch (frame->kind) {
        case framing::Frame::Kind::message:
            decode(reader, place);
            break;
        case framing::Frame::Kind::damaged:
            meetTrouble(place, Trouble::damaged, reader.damage());
            break;
        case framing::Frame::Kind::truncated:
            meetTrouble(place, Trouble::truncated, "the input ends inside it");
            break;
        }
    }
}

void Session::decode(PacketReader& reader, const Place& place)
{
    ++found;
    const std::span<const std::uint8_t> recorded = reader.recorded();
    if (recorded.empty() && !filter.looksInside() && sink->takePacked(place)) {
        ++handedOn;
        return;
    }
    const Outcome outcome = recorded.empty() ? decoderDriver.decode(place.frame.bytes())
                                             : decoderDriver.extract(recorded, options.mode);
    switch (outcome.kind) {
    case Outcome::Kind::message:
        handOn(place, outcome);
        break;
    case Outcome::Kind::unreported:
        sink->unreported(place);
        break;
    case Outcome::Kind::switchedOff:    // by the filter
        break;
    case Outcome::Kind::unknownType:
        meetTrouble(place, Trouble::unknownType, outcome.text.toStdString());
        break;
    case Outcome::Kind::misfit:
        meetTrouble(place, Trouble::misfit, outcome.text.toStdString());
        break;
    }
}

void Session::handOn(const Place& place, const Outcome& outcome)
{
    const Message& message = *outcome.message;
    const KindModel& kind = *formatModel.kindOf(message);
    if (filter.takes(message, kind)) {
        ++handedOn;
        sink->message(place, {message, kind, outcome.result});
    }
}

void Session::meetTrouble(const Place& place, Trouble trouble, const std::string& text)
{
    sink->trouble(place, trouble, text);
    stopped = options.onError == OnError::stop;
    if (stopped || (options.onError == OnError::report && !options.quiet)) {
        progress->tell(place.input + ": message " + std::to_string(place.frame.number) +
                       " at byte " + std::to_string(place.frame.beginOffset) + ": " +
                       nameOf(trouble) + ": " + text);
    }
}

bool Session::isDone() const
{
    return stopped || sink->isDone() || (options.max != 0 && handedOn >= options.max);
}
