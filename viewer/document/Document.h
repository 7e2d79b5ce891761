// One input: read once from its beginning to its end in a thread of its own, while its index grows.
#pragma once

#include "viewer/document/Input.h"
#include "viewer/document/MessageIndex.h"
#include "viewer/document/Pass.h"
#include "viewer/document/Spool.h"

#include "session/Session.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <mutex>
#include <vector>

class Document : public QObject {
    Q_OBJECT

public:
    // The format must outlive the document. Reading begins with start().
    Document(const FormatModel& model, Input from);
    ~Document() override;

    void start();
    // Reading ends; what was found stays.
    void stop();

    const FormatModel& format() const { return formatModel; }
    const MessageIndex& index() const { return messages; }
    // Null where the input is no live one.
    const ReceiveTimes* receiveTimes() const { return isLive ? &times : nullptr; }
    const Input& origin() const { return source; }
    // What can be read again from any byte: the file, or what was kept of a live input.
    Input again() const;

    bool isReading() const { return !isOver; }
    // Whether bytes come in their own time.
    bool comesSlowly() const { return isLive || source.follows; }
    std::uint64_t bytesRead() const;
    // Of the index, what is no message that can be shown.
    std::uint64_t troubles() const { return troubleCount; }
    // Of the file when reading began; 0 where that is not known.
    std::uint64_t size() const { return fileSize; }

    // Without passwords.
    QString name() const;

Q_SIGNALS:
    // The index or the number of bytes has become larger; at most 20 times a second.
    void grown();
    // Something happened to the input when it had so many messages.
    void told(const QString& text, quint64 after);
    void ended();

private:
    void read();
    void look();
    void tell(const std::string& text);

    struct Note {
        std::string text;
        std::uint64_t after;
    };

    const FormatModel& formatModel;
    Input source;
    bool isLive;
    std::uint64_t fileSize = 0;
    std::unique_ptr<Spool> spool;    // of a live input
    MessageIndex messages;
    ReceiveTimes times;

    std::mutex mutex;    // protects what follows up to a blank line
    std::vector<Note> notes;

    std::atomic<std::uint64_t> bytes = 0;
    bool isOver = false;
    std::uint64_t troubleCount = 0;
    std::size_t lastSize = 0;
    std::uint64_t lastBytes = 0;
    QTimer timer;
    Pass pass;
};
