#include "session/Session.h"

#include "base/Interrupt.h"
#include "base/Terminal.h"
#include "filter/MessageFilter.h"
#include "forms/UnitForm.h"
#include "framing/Header.h"
#include "sources/Sources.h"

namespace {

constexpr std::size_t bitsPerWord = framing::bytesPerWord * 8;

}    // namespace

Session::Session(const FormatModel& model, DecoderDriver& driver,
                 const MessageFilter& messageFilter, const InputOptions& inputOptionsOfIt)
    : formatModel(model), decoderDriver(driver), filter(messageFilter),
      inputOptions(inputOptionsOfIt),
      troubles(model, [this](const std::string& line) { tellAlong(line); })
{
}

Session::~Session() = default;

ExitStatus Session::run(const std::vector<std::string>& inputs,
                        const SessionOptions& sessionOptions, Sink& target)
{
    options = sessionOptions;
    sink = &target;
    bool allReadable = true;
    for (const std::string& name : inputs) {
        input = open(name, &name == &inputs.back());
        readInput();
        for (const std::string& problem : {input->problem(), problemOfForm(), problemOfWindow()}) {
            if (!problem.empty()) {
                tell(problem);
                allReadable = false;
            }
        }
        if (isDone() || isAskedToEnd()) {
            break;
        }
    }
    progress.reset();
    sink->finish();
    return statusOfEnd(allReadable);
}

std::unique_ptr<Source> Session::open(const std::string& name, bool isLast)
{
    std::unique_ptr<Source> source = openSource(name, {.follows = options.follows && isLast});
    source->setIdle([this] {
        progress->wait();
        sink->idle();
    });
    source->setStop([this] { return isAskedToEnd(); });
    progress = std::make_unique<Progress>(options.showsProgress && !source->isTyped());
    if (!options.quiet) {
        source->setTell([this](const std::string& line) { tellAlong(line); });
        if (!source->hint().empty()) {
            tell(source->hint());
        }
    }
    return source;
}

ExitStatus Session::statusOfEnd(bool allReadable) const
{
    if (stopped) {
        return ExitStatus::stoppedAtTrouble;
    }
    if (isAskedToEnd()) {
        return ExitStatus::interrupted;
    }
    if (!allReadable) {
        return ExitStatus::unreadable;
    }
    const bool noneChosen = counted == 0 && (filter.isRestricted() || !options.window.isOpen());
    return good == 0 || noneChosen ? ExitStatus::nothingFound : ExitStatus::success;
}

void Session::readInput()
{
    reader = readerFor(*input, inputOptions);
    readSoFar = 0;
    isFinished = false;
    window.reset();
    if (!options.window.isOpen()) {
        window.emplace(formatModel, options.window, input->isLive());
    }
    progress->begin(input->name(), input->size(), input->isLive());
    sink->beginInput(input->name());
    troubles.beginInput(input->name());
    {
        FrameQueue frames([this](FrameBatch& batch) { fill(batch); }, !input->isLive());
        const FrameBatch* batch = &frames.next();
        while (!batch->isEmpty()) {
            takeAll(*batch);
            if (isInputDone()) {
                break;
            }
            batch = &frames.next();
        }
    }
    troubles.endInput();
    progress->erase();
    const ReaderCounters counters = reader->counters();
    if (reader->problem().empty() && (input->problem().empty() || counters.bytesRead > 0)) {
        sink->endOfInput(input->name(), counters);
    }
}

std::string Session::problemOfForm() const
{
    const std::string problem = reader->problem();
    return problem.empty() ? problem
                           : "cannot read " + input->name() + ": " + problem +
                                 "; --form says in which form it is";
}

std::string Session::problemOfWindow() const
{
    return window && !window->problem().empty() ? "cannot choose messages of " + input->name() +
                                                      " by their time: " + window->problem()
                                                : std::string();
}

// Does not wait for bytes with something at hand.
void Session::fill(FrameBatch& batch)
{
    while (!batch.isFull()) {
        if (const framing::Frame* frame = reader->next()) {
            const bool isDamaged = frame->kind == framing::Frame::Kind::damaged;
            batch.add(*frame, reader->recorded(), isDamaged ? reader->damage() : std::string());
            addEnvelope(batch);
        } else if ((!batch.isEmpty() && input->isLive()) || !readOn()) {
            break;
        }
    }
}

// What the form tells of its own counts more than when the bytes came.
void Session::addEnvelope(FrameBatch& batch) const
{
    const Envelope* const told = reader->envelope();
    if (told == nullptr && !input->received()) {
        return;
    }
    Envelope envelope = told != nullptr ? *told : Envelope{};
    if (!envelope.received) {
        envelope.received = input->received();
    }
    batch.setEnvelope(envelope);
}

// Gives the reader more bytes, or the end of the input; false when it has had that or wants no
// more.
bool Session::readOn()
{
    if (isFinished || !reader->problem().empty() || reader->isComplete()) {
        return false;
    }
    const std::span<const std::uint8_t> bytes = input->read();
    if (!bytes.empty()) {
        readSoFar += bytes.size();
        if (options.keep) {
            options.keep(bytes);
        }
        reader->push(bytes);
        const std::lock_guard lock(tellMutex);
        progress->advance(readSoFar);
        return true;
    }
    isFinished = true;
    // An input that was left early does not end here: what is incomplete is not truncated.
    if (isAskedToEnd()) {
        return false;
    }
    reader->finish();
    return true;
}

void Session::takeAll(const FrameBatch& batch)
{
    for (const FrameBatch::Entry& entry : batch.entries()) {
        take(batch, entry);
        if (isInputDone()) {
            return;
        }
    }
    if (input->isLive()) {
        sink->pause();
    }
}

void Session::take(const FrameBatch& batch, const FrameBatch::Entry& entry)
{
    found.number = entry.number;
    found.begin = entry.begin;
    found.end = entry.end;
    found.envelope = &batch.envelopeOf(entry);
    found.text.clear();
    found.isShort = false;
    if (window && !isInWindow(batch, entry)) {
        return;
    }
    switch (entry.kind) {
    case framing::Frame::Kind::message:
        if (!decode(batch.bytesOf(entry), entry.isRecording)) {
            return;
        }
        break;
    case framing::Frame::Kind::damaged:
        found.bytes = batch.bytesOf(entry);
        found.what = Found::What::damaged;
        found.text = batch.problemOf(entry);
        break;
    case framing::Frame::Kind::truncated:
        found.bytes = batch.bytesOf(entry);
        found.what = Found::What::truncated;
        found.text = "the input ends inside it";
        break;
    }
    counted += sink->counts(found) ? 1U : 0U;
    sink->take(found);
    if (!found.text.empty() || found.isShort) {
        tellTrouble();
    }
}

bool Session::isInWindow(const FrameBatch& batch, const FrameBatch::Entry& entry)
{
    const bool isMessage = entry.kind == framing::Frame::Kind::message;
    framing::Header header;
    if (isMessage) {
        const std::span<const std::uint8_t> bytes = batch.bytesOf(entry);
        const UnitForm& units = entry.isRecording ? recordedUnits : packedUnits;
        header = framing::headerOf(units.data(bytes.data()), units.data(&bytes[units.size]));
    }
    const bool takes = window->takes(entry.number, isMessage ? &header : nullptr, *found.envelope);
    good += isMessage && !takes ? 1 : 0;    // else it is counted where it is decoded
    return takes;
}

// False for what the filter keeps back.
bool Session::decode(std::span<const std::uint8_t> bytes, bool isRecording)
{
    ++good;
    if (found.envelope->bitsHeard.value_or(bytes.size() * 8) < bytes.size() * 8) {
        return decodeHeard(bytes);
    }
    return decodeWhole(bytes, isRecording);
}

bool Session::decodeWhole(std::span<const std::uint8_t> bytes, bool isRecording)
{
    Outcome outcome =
        isRecording ? decoderDriver.extract(bytes, options.mode) : decoderDriver.decode(bytes);
    found.bytes = outcome.packed;
    found.result = outcome.result;
    switch (outcome.kind) {
    case Outcome::Kind::message:
        return takeMessage(outcome);
    case Outcome::Kind::switchedOff:    // by the filter
        return false;
    case Outcome::Kind::unreported:
        return takeUnreported(outcome);
    case Outcome::Kind::unknownType:
        return takeUnknown(outcome);
    case Outcome::Kind::misfit:
        break;
    }
    return takeMisfit(outcome);
}

// A message without its last bits. They may be fill: then it is whole all the same. Else it has the
// elements that came as a whole, and its number of words stays the one that it says.
bool Session::decodeHeard(std::span<const std::uint8_t> bytes)
{
    found.bytes = bytes;
    const std::size_t heard = *found.envelope->bitsHeard;
    const KindModel* const kind = kindOfHeader();
    if (kind != nullptr && fitsInto(heard, *kind, bytes)) {
        return decodeWhole(bytes, false);
    }
    found.isShort = true;
    const std::size_t words = heard / bitsPerWord;
    for (const std::size_t some : {(heard + bitsPerWord - 1) / bitsPerWord, words}) {
        found.bytes = shortMessage.cutTo(some, bytes);
        if (kind != nullptr && fitsInto(heard, *kind, found.bytes)) {
            return takeShort(*kind);
        }
    }
    return decodeWhole(found.bytes, false);
}

// Whether decoding the kind's layout, which then is the table's record, needs no more bits.
bool Session::fitsInto(std::size_t bits, const KindModel& kind, std::span<const std::uint8_t> bytes)
{
    const std::int32_t needed = tableRecord.decode(*kind.row, bytes);
    found.bits = needed >= 0 ? static_cast<std::size_t>(needed) : 0;
    return needed >= 0 && found.bits <= bits;
}

bool Session::takeShort(const KindModel& kind)
{
    found.what = kind.info != nullptr ? Found::What::message : Found::What::unreported;
    found.kind = &kind;
    found.message = {};
    found.record = tableRecord.get();
    sayDeclaredWords();
    return filterTakes();
}

// In the table's record of the message in work; unless fields that did not come would seem to be
// there then.
void Session::sayDeclaredWords()
{
    const FieldModel* const words = found.kind->field(RTCM2_MEANS_WORDS);
    if (words != nullptr && !found.kind->decidesPresence(*words)) {
        RTCM2_write_integer(tableRecord.get(), words->row, 0, shortMessage.declared());
    }
}

bool Session::takeMessage(Outcome& outcome)
{
    const KindModel& kind = *formatModel.kindOf(outcome.record);
    found.what = Found::What::message;
    found.kind = &kind;
    found.record = outcome.record;
    if (!filterTakes()) {
        return false;
    }
    found.message = std::move(outcome.message);
    found.bits = static_cast<std::size_t>(outcome.result);
    return true;
}

bool Session::takeUnreported(const Outcome& outcome)
{
    const KindModel* const kind = kindOfHeader();
    const std::int32_t bits =
        kind != nullptr ? tableRecord.decode(*kind->row, found.bytes) : RTCM2_ERR_INVALID_MESSAGE;
    if (bits < 0) {
        return takeMisfit(outcome);
    }
    found.what = Found::What::unreported;
    found.kind = kind;
    found.record = tableRecord.get();
    found.bits = static_cast<std::size_t>(bits);
    return filterTakes();
}

// Of its content nothing is known: the header is decoded as that of another kind.
bool Session::takeUnknown(const Outcome& outcome)
{
    if (found.bytes.size() < framing::headerBytes) {
        return takeMisfit(outcome);
    }
    found.what = Found::What::unknownType;
    found.text = outcome.text.toStdString();
    found.kind = &formatModel.unknownKind();
    tableRecord.decode(*found.kind->row, found.bytes.first(framing::headerBytes));
    found.record = tableRecord.get();
    found.bits = found.bytes.size() * 8;
    if (found.isShort) {
        sayDeclaredWords();
    }
    return filterTakes();
}

bool Session::filterTakes() const
{
    return filter.takes({.record = found.record, .envelope = found.envelope}, *found.kind);
}

bool Session::takeMisfit(const Outcome& outcome)
{
    found.what = Found::What::misfit;
    found.text = outcome.text.isEmpty() ? "no message" : outcome.text.toStdString();
    const KindModel* const kind = kindOfHeader();
    return kind == nullptr || filter.takesKind(*kind);
}

// By the type that the header of the message in work names; null where that is of no kind.
const KindModel* Session::kindOfHeader() const
{
    return found.bytes.size() < framing::headerBytes
               ? nullptr
               : formatModel.modelOf(RTCM2_kind_of_type(
                     static_cast<std::int32_t>(framing::headerOf(found.bytes).type)));
}

// Says what gave no message, and stops there if that is wanted. What the sink shows needs no more
// words.
void Session::tellTrouble()
{
    stopped = options.onError == OnError::stop;
    const bool isShown =
        found.what == Found::What::unknownType && !found.isShort && sink->counts(found);
    if (stopped || (options.onError == OnError::report && !options.quiet && !isShown)) {
        troubles.add(found);
    }
}

// Behind the results that came before.
void Session::tellAlong(const std::string& text)
{
    if (options.showsResults) {
        sink->pause();
    }
    tell(text);
}

void Session::tell(const std::string& text)
{
    const std::lock_guard lock(tellMutex);
    if (options.tell) {
        options.tell(text);
    } else {
        progress->tell(text);
    }
}

bool Session::isAskedToEnd() const
{
    return interrupt::requested() || (options.isAskedToEnd && options.isAskedToEnd());
}

bool Session::isDone() const
{
    return stopped || sink->isDone() || (options.max != 0 && counted >= options.max);
}
