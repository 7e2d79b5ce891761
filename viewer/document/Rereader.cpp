#include "viewer/document/Rereader.h"

#include "viewer/document/MessageReader.h"
#include "viewer/document/RowText.h"

#include <algorithm>

namespace {

const QString missing = QStringLiteral("not there any more: the file has changed");

}    // namespace

Rereader::Rereader(const FormatModel& model, Input readAgain, const MessageIndex& read)
    : formatModel(model), input(std::move(readAgain)), index(read)
{
    pass.begin([this] { work(); });
}

Rereader::~Rereader()
{
    {
        const std::lock_guard lock(mutex);
        pass.cancel();
    }
    canWork.notify_one();
    pass.end();
}

const QString* Rereader::content(std::size_t place)
{
    const std::size_t number = place / pageSize;
    const Page* const page = pages.object(number);
    if (page != nullptr && place % pageSize < page->rows.size()) {
        return &page->rows[place % pageSize];
    }
    const std::lock_guard lock(mutex);
    std::erase(waitingPages, number);
    if (waitingPages.size() == mostWaiting) {
        waitingPages.erase(waitingPages.begin());
    }
    waitingPages.push_back(number);
    canWork.notify_one();
    return nullptr;
}

void Rereader::fetch(std::size_t place)
{
    const std::lock_guard lock(mutex);
    waitingDetail = place;
    canWork.notify_one();
}

void Rereader::work()
{
    MessageReader reader(formatModel, input, index);
    const RowText rowText(formatModel);
    std::unique_lock lock(mutex);
    const auto hasWork = [this] {
        return pass.isAskedToEnd() || waitingDetail || !waitingPages.empty();
    };
    while (canWork.wait(lock, hasWork), !pass.isAskedToEnd()) {
        if (waitingDetail) {
            const std::size_t place = *std::exchange(waitingDetail, std::nullopt);
            lock.unlock();
            Q_EMIT detailCame(place, std::make_shared<const MessageDetail>(reader.detail(place)));
        } else {
            const std::size_t page = waitingPages.back();
            lock.unlock();
            const std::shared_ptr<Page> rows = read(reader, rowText, page);
            QMetaObject::invokeMethod(this, [this, page, rows] { keepPage(page, rows); });
            lock.lock();
            std::erase(waitingPages, page);
            lock.unlock();
        }
        lock.lock();
    }
}

std::shared_ptr<Rereader::Page> Rereader::read(MessageReader& reader, const RowText& rowText,
                                               std::size_t page)
{
    const std::size_t from = page * pageSize;
    const std::size_t until = std::min(from + pageSize, index.size());
    const auto rows = std::make_shared<Page>();
    rows->rows.resize(until - from, missing);
    Text text;
    const auto take = [&](std::size_t place, const Found& found) {
        text.clear();
        rowText.append(text, found);
        rows->rows[place - from] =
            QString::fromUtf8(text.view().data(), static_cast<qsizetype>(text.size()));
    };
    reader.read(from, until, take, [this] { return pass.isAskedToEnd(); });
    const QString problem = QString::fromStdString(reader.problem());
    if (!problem.isEmpty()) {
        std::replace(rows->rows.begin(), rows->rows.end(), missing, problem);
    }
    return rows;
}

void Rereader::keepPage(std::size_t page, const std::shared_ptr<Page>& rows)
{
    const std::size_t from = page * pageSize;
    const std::size_t until = from + rows->rows.size();
    pages.insert(page, new Page(std::move(*rows)));
    Q_EMIT contentsCame(from, until);
}

// Compiled here instead of on its own.
#include "moc_Rereader.cpp"
