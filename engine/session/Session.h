// Reads inputs, decodes what they hold and hands it on.
#pragma once

#include "base/ExitStatus.h"
#include "base/Progress.h"
#include "plugin/DecoderDriver.h"
#include "session/FrameQueue.h"
#include "session/InputReader.h"
#include "session/ShortMessage.h"
#include "session/Sink.h"
#include "session/TableRecord.h"
#include "session/Troubles.h"
#include "session/Window.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

class MessageFilter;

// What to do about messages that are damaged or cannot be decoded.
enum class OnError { report, skip, stop };

struct SessionOptions {
    std::uint64_t max = 0;    // of what counts for the sink; 0 for all
    OnError onError = OnError::report;
    bool quiet = false;            // nothing on standard error but what ends the program
    bool showsProgress = false;    // on standard error, unless an input is typed
    bool showsResults = false;     // people see them come, so that what is told must stand in order
    unsigned char mode = 0;        // of recorded messages
    WindowOptions window{};        // of each input
    bool follows = false;          // waits at the end of the last file for what is written to it

    // For hosts without a terminal. Each may be called by a second thread, too.
    std::function<void(const std::string& line)> tell{};    // instead of standard error
    std::function<bool()> isAskedToEnd{};                   // beside Ctrl-C; asked now and then
    // The bytes of an input, before what is found in them.
    std::function<void(std::span<const std::uint8_t>)> keep{};
};

class Session {
public:
    // Everything given must outlive the session.
    Session(const FormatModel& model, DecoderDriver& driver, const MessageFilter& messageFilter,
            const InputOptions& inputOptions);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Reads the inputs one after another, "-" being standard input. An input that cannot be read is
    // told on standard error, and the others are read all the same. Asked to end, the session stops
    // after what was read so far. Nothing is found where the filter is restricted and leaves
    // nothing that counts for the sink.
    ExitStatus run(const std::vector<std::string>& inputs, const SessionOptions& sessionOptions,
                   Sink& target);

    // Messages that were found so far, of any kind, whether they were chosen or not.
    std::uint64_t messages() const { return good; }
    // Bytes that were read so far of the input in work; for any thread.
    std::uint64_t bytesRead() const { return readSoFar; }

private:
    void readInput();
    void fill(FrameBatch& batch);
    void addEnvelope(FrameBatch& batch) const;
    bool readOn();
    std::string problemOfForm() const;
    std::string problemOfWindow() const;

    void takeAll(const FrameBatch& batch);
    void take(const FrameBatch& batch, const FrameBatch::Entry& entry);
    bool isInWindow(const FrameBatch& batch, const FrameBatch::Entry& entry);
    bool decode(std::span<const std::uint8_t> bytes, bool isRecording);
    bool decodeHeard(std::span<const std::uint8_t> bytes);
    bool decodeWhole(std::span<const std::uint8_t> bytes, bool isRecording);
    bool fitsInto(std::size_t bits, const KindModel& kind, std::span<const std::uint8_t> bytes);
    bool takeShort(const KindModel& kind);
    void sayDeclaredWords();
    bool takeMessage(Outcome& outcome);
    bool takeUnreported(const Outcome& outcome);
    bool takeUnknown(const Outcome& outcome);
    bool takeMisfit(const Outcome& outcome);
    const KindModel* kindOfHeader() const;
    bool filterTakes() const;
    void tellTrouble();
    void tellAlong(const std::string& text);
    void tell(const std::string& text);
    std::unique_ptr<Source> open(const std::string& name, bool isLast);
    ExitStatus statusOfEnd(bool allReadable) const;
    bool isAskedToEnd() const;
    bool isInputDone() const { return isDone() || sink->hasEnough() || isPastWindow(); }
    bool isPastWindow() const { return window && (window->isPast() || !window->problem().empty()); }
    bool isDone() const;

    const FormatModel& formatModel;
    DecoderDriver& decoderDriver;
    const MessageFilter& filter;
    InputOptions inputOptions;

    SessionOptions options;
    Sink* sink = nullptr;
    Found found;                // in work
    TableRecord tableRecord;    // of what is in work, where the decoder gives none
    ShortMessage shortMessage;
    Troubles troubles;
    std::optional<Window> window;    // nothing where all messages are wanted
    std::uint64_t good = 0;          // messages of any kind, decodable or not
    std::uint64_t counted = 0;       // of what was found, what counts for the sink
    bool stopped = false;            // at trouble

    // What fill() works with, perhaps on a second thread:
    std::unique_ptr<Source> input;
    std::unique_ptr<PacketReader> reader;
    std::atomic<std::uint64_t> readSoFar = 0;    // bytes
    bool isFinished = false;                     // the reader knows that nothing more will come

    std::mutex tellMutex;    // of progress, which both threads tell of
    std::unique_ptr<Progress> progress;
};
