#include "Session.h"

#include "InputFile.h"
#include "Interrupt.h"
#include "Message.h"

#include <cstdio>

namespace {

Trouble troubleOf(Outcome::Kind kind)
{
    return kind == Outcome::Kind::unknownType   ? Trouble::unknownType
           : kind == Outcome::Kind::switchedOff ? Trouble::switchedOff
                                                : Trouble::misfit;
}

std::string damageText(const framing::Frame& frame)
{
    return frame.failedWord == 0 ? std::string("damaged")
                                 : "word " + std::to_string(frame.failedWord) + " is damaged";
}

}    // namespace

Session::Session(const FormatModel& model, DecoderDriver& driver, ReaderFactory makeReader)
    : formatModel(model), decoderDriver(driver), readerFactory(std::move(makeReader))
{
}

ExitStatus Session::run(const std::vector<std::string>& inputs, Sink& sink)
{
    ExitStatus status = ExitStatus::success;
    for (const std::string& name : inputs) {
        InputFile input(name);
        readInput(input, sink);
        if (!input.problem().empty()) {
            std::fprintf(stderr, "rtcm2: %s\n", input.problem().c_str());
            status = ExitStatus::unreadable;
        }
        if (sink.isDone()) {
            return status;
        }
    }
    if (interrupt::requested()) {
        return ExitStatus::interrupted;
    }
    return status == ExitStatus::success && found == 0 ? ExitStatus::nothingFound : status;
}

void Session::readInput(InputFile& input, Sink& sink)
{
    const std::unique_ptr<PacketReader> reader = readerFactory();
    for (auto bytes = input.read(); !bytes.empty() && !sink.isDone(); bytes = input.read()) {
        reader->push(bytes);
        drain(*reader, input.name(), sink);
        if (input.isLive()) {
            sink.pause();
        }
    }
    reader->finish();
    drain(*reader, input.name(), sink);
    sink.endOfInput(input.name(), reader->counters());
}

void Session::drain(PacketReader& reader, const std::string& name, Sink& sink)
{
    while (!sink.isDone()) {
        const framing::Frame* frame = reader.next();
        if (frame == nullptr) {
            return;
        }
        const Place place{name, *frame};
        switch (frame->kind) {
        case framing::Frame::Kind::message:
            decode(place, sink);
            break;
        case framing::Frame::Kind::damaged:
            sink.trouble(place, Trouble::damaged, damageText(*frame));
            break;
        case framing::Frame::Kind::truncated:
            sink.trouble(place, Trouble::truncated, "the input ends inside the message");
            break;
        }
    }
}

void Session::decode(const Place& place, Sink& sink)
{
    ++found;
    const Outcome outcome = decoderDriver.decode(place.frame.bytes());
    if (outcome.kind == Outcome::Kind::message) {
        const Message& message = *outcome.message;
        sink.message(place, {message, *formatModel.kindOf(message), outcome.result});
    } else if (outcome.kind == Outcome::Kind::unreported) {
        sink.unreported(place);
    } else {
        sink.trouble(place, troubleOf(outcome.kind), outcome.text.toStdString());
    }
}
