// Reads inputs, decodes what they hold and hands it on.
#pragma once

#include "base/ExitStatus.h"
#include "base/Progress.h"
#include "format/FormatModel.h"
#include "forms/PacketReader.h"
#include "framing/Frame.h"
#include "plugin/DecoderDriver.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class InputFile;
class MessageFilter;

// Where something was found.
struct Place {
    const std::string& input;       // name for people
    const framing::Frame& frame;    // packed bytes, number in the input, position
};

// A message as the decoder gave it; valid during the call only.
struct Decoded {
    const Message& message;
    const KindModel& kind;
    int bits;    // of the packed message that the kind's layout consumed
};

// Why a stretch of an input gave no message object.
enum class Trouble {
    damaged,        // bad parity, or bytes where a message had to begin
    truncated,      // the input ends inside a message
    unknownType,    // a message of no kind that the decoder knows
    misfit,         // a message of a known kind whose content does not fit
};

// The name of a kind of trouble, for people.
const char* nameOf(Trouble trouble);

// What a command does with what is found.
class Sink {
public:
    virtual ~Sink() = default;

    // A message as it was found, where no filter has to look into it and nothing changes it on the
    // way to the decoder. True when the sink knows all that it needs; false to have it decoded.
    virtual bool takePacked(const Place&) { return false; }

    // A message that passed the filter.
    virtual void message(const Place& place, const Decoded& decoded) = 0;

    // A message that was decoded but that the decoder reports to nobody.
    virtual void unreported(const Place&) {}

    // What gave no message. The session has told people about it already.
    virtual void trouble(const Place&, Trouble, const std::string&) {}

    // After the last message of an input.
    virtual void endOfInput(const std::string&, const ReaderCounters&) {}

    // After everything, whatever ended it.
    virtual void finish() {}

    // Between two reads of an input whose bytes arrive slowly.
    virtual void pause() {}

    // Whether there is no point in going on.
    virtual bool isDone() const { return false; }

    // Whether results are written while inputs are read, so that progress must not be shown on the
    // same terminal.
    virtual bool writesAlong() const { return true; }
};

// What to do about messages that are damaged or cannot be decoded.
enum class OnError { report, skip, stop };

struct SessionOptions {
    std::uint64_t max = 0;    // messages to hand on; 0 for all
    OnError onError = OnError::report;
    bool quiet = false;            // nothing on standard error but what ends the program
    bool showsProgress = false;    // on standard error, unless an input is typed
    unsigned char mode = 0;        // of recorded messages
};

class Session {
public:
    using ReaderFactory = std::function<std::unique_ptr<PacketReader>()>;

    // Everything given must outlive the session.
    Session(const FormatModel& model, DecoderDriver& driver, const MessageFilter& messageFilter,
            ReaderFactory makeReader);

    // Reads the inputs one after another, "-" being standard input. An input that cannot be read is
    // told on standard error, and the others are read all the same. Asked to end, the session stops
    // after what was read so far.
    ExitStatus run(const std::vector<std::string>& inputs, const SessionOptions& sessionOptions,
                   Sink& target);

private:
    void readInput(InputFile& input);
    void readBytes(InputFile& input, PacketReader& reader);
    void drain(PacketReader& reader, const std::string& name);
    void decode(PacketReader& reader, const Place& place);
    ExitStatus statusOfEnd(bool allReadable) const;
    void handOn(const Place& place, const Outcome& outcome);
    void meetTrouble(const Place& place, Trouble trouble, const std::string& text);
    bool isDone() const;

    const FormatModel& formatModel;
    DecoderDriver& decoderDriver;
    const MessageFilter& filter;
    ReaderFactory readerFactory;

    SessionOptions options;
    Sink* sink = nullptr;
    std::unique_ptr<Progress> progress;
    std::uint64_t found = 0;       // messages of any kind, decodable or not
    std::uint64_t handedOn = 0;    // messages that passed the filter
    bool stopped = false;          // at trouble
};
