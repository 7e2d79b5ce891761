#include "Session.h"

#include "InputFile.h"
#include "Interrupt.h"
#include "Message.h"
#include "MessageFilter.h"

#include <cinttypes>
#include <cstdio>

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

namespace {

std::string damageText(const framing::Frame& frame)
{
    return frame.failedWord == 0 ? std::string("its words do not belong together")
                                 : "bad parity in word " + std::to_string(frame.failedWord);
}

}    // namespace

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
    ExitStatus status = ExitStatus::success;
    for (const std::string& name : inputs) {
        InputFile input(name);
        readInput(input);
        if (!input.problem().empty()) {
            std::fprintf(stderr, "rtcm2: %s\n", input.problem().c_str());
            status = ExitStatus::unreadable;
        }
        if (isDone()) {
            break;
        }
    }
    sink->finish();
    if (stopped) {
        return ExitStatus::stoppedAtTrouble;
    }
    if (interrupt::requested()) {
        return ExitStatus::interrupted;
    }
    return status == ExitStatus::success && found == 0 ? ExitStatus::nothingFound : status;
}

void Session::readInput(InputFile& input)
{
    const std::unique_ptr<PacketReader> reader = readerFactory();
    for (auto bytes = input.read(); !bytes.empty() && !isDone(); bytes = input.read()) {
        reader->push(bytes);
        drain(*reader, input.name());
        if (input.isLive()) {
            sink->pause();
        }
    }
    reader->finish();
    drain(*reader, input.name());
    sink->endOfInput(input.name(), reader->counters());
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
            decode(place);
            break;
        case framing::Frame::Kind::damaged:
            meetTrouble(place, Trouble::damaged, damageText(*frame));
            break;
        case framing::Frame::Kind::truncated:
            meetTrouble(place, Trouble::truncated, "the input ends inside it");
            break;
        }
    }
}

void Session::decode(const Place& place)
{
    ++found;
    const Outcome outcome = decoderDriver.decode(place.frame.bytes());
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
        std::fprintf(stderr, "rtcm2: %s: message %" PRIu64 " at byte %" PRIu64 ": %s: %s\n",
                     place.input.c_str(), place.frame.number, place.frame.beginOffset,
                     nameOf(trouble), text.c_str());
    }
}

bool Session::isDone() const
{
    return stopped || sink->isDone() || (options.max != 0 && handedOn >= options.max);
}
