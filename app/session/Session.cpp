#include "session/Session.h"

#include "base/InputFile.h"
#include "base/Interrupt.h"
#include "filter/MessageFilter.h"

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
    pipeline = std::make_unique<Pipeline>(target);
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
    pipeline.reset();
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
    return good == 0 ? ExitStatus::nothingFound : ExitStatus::success;
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
    pipeline->flush();
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
            pipeline->flush();
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
        find(reader, *frame, name);
    }
}

void Session::find(PacketReader& reader, const framing::Frame& frame, const std::string& name)
{
    Found& found = pipeline->place();
    found.number = frame.number;
    found.begin = frame.beginOffset;
    found.end = frame.endOffset;
    found.kind = nullptr;
    found.text.clear();
    switch (frame.kind) {
    case framing::Frame::Kind::message:
        ++good;
        if (!decode(reader, frame, found)) {
            return;
        }
        break;
    case framing::Frame::Kind::damaged:
        found.what = Found::What::damaged;
        found.text = reader.damage();
        break;
    case framing::Frame::Kind::truncated:
        found.what = Found::What::truncated;
        found.text = "the input ends inside it";
        break;
    }
    counted += sink->counts(found) ? 1U : 0U;
    if (!found.text.empty()) {
        tell(found, name);
    }
    pipeline->add(name);
}

// False for what the filter keeps back.
bool Session::decode(PacketReader& reader, const framing::Frame& frame, Found& found)
{
    const std::span<const std::uint8_t> recorded = reader.recorded();
    Outcome outcome = recorded.empty() ? decoderDriver.decode(frame.bytes())
                                       : decoderDriver.extract(recorded, options.mode);
    found.setPacked(outcome.packed);
    switch (outcome.kind) {
    case Outcome::Kind::message:
        return takeMessage(outcome, found);
    case Outcome::Kind::switchedOff:    // by the filter
        return false;
    case Outcome::Kind::unreported:
        found.what = Found::What::unreported;
        break;
    case Outcome::Kind::unknownType:
        found.what = Found::What::unknownType;
        found.text = outcome.text.toStdString();
        break;
    case Outcome::Kind::misfit:
        found.what = Found::What::misfit;
        found.text = outcome.text.toStdString();
        break;
    }
    return true;
}

bool Session::takeMessage(Outcome& outcome, Found& found) const
{
    const KindModel& kind = *formatModel.kindOf(outcome.record);
    if (!filter.takes(outcome.record, kind)) {
        return false;
    }
    found.what = Found::What::message;
    found.kind = &kind;
    found.record = outcome.record;
    found.message = std::move(outcome.message);
    found.bits = static_cast<std::size_t>(outcome.result);
    return true;
}

// Says what gave no message, and stops there if that is wanted.
void Session::tell(const Found& found, const std::string& name)
{
    stopped = options.onError == OnError::stop;
    if (stopped || (options.onError == OnError::report && !options.quiet)) {
        if (options.showsResults) {
            pipeline->flush();
            sink->pause();
        }
        progress->tell(name + ": message " + std::to_string(found.number) + " at byte " +
                       std::to_string(found.begin) + ": " + nameOf(found.what) + ": " + found.text);
    }
}

bool Session::isDone() const
{
    return stopped || pipeline->isDone() || (options.max != 0 && counted >= options.max);
}
