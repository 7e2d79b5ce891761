// Fetches what the window shows of messages, in a thread of its own: the content of rows, and one
// message as a whole.
#pragma once

#include "viewer/document/Input.h"
#include "viewer/document/MessageDetail.h"
#include "viewer/document/MessageIndex.h"
#include "viewer/document/Pass.h"

#include <QCache>
#include <QObject>
#include <QString>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

class MessageReader;
class RowText;

class Rereader : public QObject {
    Q_OBJECT

public:
    // As MessageReader has them.
    Rereader(const FormatModel& model, Input readAgain, const MessageIndex& read);
    ~Rereader() override;

    // What a row says of a message; null where it has to be fetched first, which is begun then.
    const QString* content(std::size_t place);
    // Begins to fetch a message; one that was asked for before is not told any more.
    void fetch(std::size_t place);

Q_SIGNALS:
    // Rows from one to another, which is one past the last, can be asked for.
    void contentsCame(quint64 from, quint64 until);
    void detailCame(quint64 place, std::shared_ptr<const MessageDetail> detail);

private:
    struct Page {
        std::vector<QString> rows;
    };
    static constexpr std::size_t pageSize = 64;
    static constexpr std::size_t mostWaiting = 8;    // pages; those that were asked for last
    static constexpr int mostKept = 256;             // pages

    void work();
    std::shared_ptr<Page> read(MessageReader& reader, const RowText& rowText, std::size_t page);
    void keepPage(std::size_t page, const std::shared_ptr<Page>& rows);

    const FormatModel& formatModel;
    Input input;
    const MessageIndex& index;
    QCache<quint64, Page> pages{mostKept};

    std::mutex mutex;    // protects what follows up to a blank line
    std::condition_variable canWork;
    std::vector<std::size_t> waitingPages;
    std::optional<std::size_t> waitingDetail;

    Pass pass;
};
