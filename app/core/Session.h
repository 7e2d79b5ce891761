// Reads inputs, decodes what they hold and hands it on.
#pragma once

#include "DecoderDriver.h"
#include "ExitStatus.h"
#include "FormatModel.h"
#include "Frame.h"
#include "PacketReader.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class InputFile;

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
    switchedOff,    // a message of a kind that is switched off
    misfit,         // a message of a known kind whose content does not fit
};

// What a command does with what is found.
class Sink {
public:
    virtual ~Sink() = default;

    virtual void message(const Place& place, const Decoded& decoded) = 0;

    // A message that was decoded but that the decoder reports to nobody.
    virtual void unreported(const Place&) {}

    virtual void trouble(const Place& place, Trouble trouble, const std::string& text) = 0;

    // After the last message of an input.
    virtual void endOfInput(const std::string&, const ReaderCounters&) {}

    // Between two reads of an input whose bytes arrive slowly.
    virtual void pause() {}

    // Whether there is no point in going on.
    virtual bool isDone() const { return false; }
};

class Session {
public:
    using ReaderFactory = std::function<std::unique_ptr<PacketReader>()>;

    Session(const FormatModel& model, DecoderDriver& driver, ReaderFactory makeReader);

    // Reads the inputs one after another, "-" being standard input. An input that cannot be read is
    // told on standard error, and the others are read all the same.
    ExitStatus run(const std::vector<std::string>& inputs, Sink& sink);

private:
    void readInput(InputFile& input, Sink& sink);
    void drain(PacketReader& reader, const std::string& name, Sink& sink);
    void decode(const Place& place, Sink& sink);

    const FormatModel& formatModel;
    DecoderDriver& decoderDriver;
    ReaderFactory readerFactory;
    std::uint64_t found = 0;    // messages of any kind, decodable or not
};
