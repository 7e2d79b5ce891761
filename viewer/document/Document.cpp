#include "viewer/document/Document.h"

#include "viewer/document/IndexSink.h"

#include "filter/MessageFilter.h"
#include "plugin/Decoding.h"
#include "sources/Sources.h"

#include <filesystem>
#include <new>

namespace {

constexpr int lookEvery = 50;    // milliseconds

std::uint64_t sizeOf(const std::string& name)
{
    std::error_code unknown;
    const std::uintmax_t size = std::filesystem::file_size(name, unknown);
    return unknown ? 0 : size;
}

}    // namespace

Document::Document(const FormatModel& model, Input from)
    : formatModel(model), source(std::move(from)), isLive(isLiveInput(source.name))
{
    timer.setInterval(lookEvery);
    connect(&timer, &QTimer::timeout, this, &Document::look);
}

Document::~Document() = default;

void Document::start()
{
    fileSize = isLive ? 0 : sizeOf(source.name);
    if (isLive) {
        spool = std::make_unique<Spool>();
    }
    timer.start();
    pass.begin([this] { read(); });
}

void Document::stop()
{
    pass.cancel();
}

Input Document::again() const
{
    return isLive ? Input{.name = spool->path(), .form = source.form, .mode = source.mode} : source;
}

QString Document::name() const
{
    return QString::fromStdString(shownInput(source.name));
}

std::uint64_t Document::bytesRead() const
{
    return bytes;
}

void Document::read()
try {
    Decoding decoding;
    const MessageFilter all(formatModel, {});
    Session session(formatModel, decoding.driver, all, {.form = source.form});
    IndexSink sink(formatModel, messages, isLive ? &times : nullptr);
    SessionOptions options{
        .onError = OnError::skip, .mode = source.mode, .follows = source.follows};
    options.tell = [this](const std::string& text) { tell(text); };
    options.isAskedToEnd = [this] {
        return pass.isAskedToEnd() || (spool != nullptr && !spool->problem().empty());
    };
    options.keep = [this](std::span<const std::uint8_t> some) {
        bytes += some.size();
        if (spool != nullptr && !spool->write(some)) {
            tell(spool->problem());
        }
    };
    session.run({source.name}, options, sink);
    if (sink.isDone()) {
        tell("more than " + std::to_string(MessageIndex::most) +
             " messages: those behind them are not shown");
    }
} catch (const std::bad_alloc&) {
    tell("not enough memory: the messages behind these are not shown");
} catch (const UrlError& error) {
    tell(error.text);
}

void Document::tell(const std::string& text)
{
    const std::lock_guard lock(mutex);
    notes.push_back({text, messages.size()});
}

// What is finished is looked at before what there is, so that nothing is missed at the end.
void Document::look()
{
    const bool wasFinished = pass.isFinished();
    std::vector<Note> told;
    {
        const std::lock_guard lock(mutex);
        told.swap(notes);
    }
    const std::size_t count = messages.size();
    const std::uint64_t byteCount = bytes;
    for (std::size_t place = lastSize; place < count; ++place) {
        troubleCount += messages[place].hasRecord() ? 0 : 1;
    }
    if (count != lastSize || byteCount != lastBytes) {
        lastSize = count;
        lastBytes = byteCount;
        Q_EMIT grown();
    }
    for (const Note& note : told) {
        Q_EMIT this->told(QString::fromStdString(note.text), note.after);
    }
    if (wasFinished && !isOver) {
        isOver = true;
        timer.stop();
        Q_EMIT ended();
    }
}

// Compiled here instead of on its own.
#include "moc_Document.cpp"
