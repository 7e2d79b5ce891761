#include "viewer/list/MessageModel.h"

#include "viewer/colours/KindColours.h"

#include "base/Text.h"
#include "format/BriefLine.h"
#include "forms/TimeStamp.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <array>
#include <climits>

namespace {

constexpr std::array<const char*, MessageModel::columns> columnNames = {
    "No.", "Byte", "Received", "Time", "Station", "MMSI", "Type", "Content"};

QString numberOr(std::uint64_t value, std::uint64_t none)
{
    return value == none ? QStringLiteral("-") : QString::number(value);
}

QString clockText(std::uint32_t milliseconds)
{
    if (milliseconds == IndexEntry::noTime) {
        return QStringLiteral("-");
    }
    Text text;
    appendClock(text, milliseconds);
    return QString::fromLatin1(text.view().data(), static_cast<qsizetype>(text.size()));
}

QString receivedText(const ReceiveTimes* times, std::size_t place)
{
    const std::int64_t time = times != nullptr && place < times->size() ? (*times)[place] : 0;
    return time == 0 ? QStringLiteral("-") : QString::fromStdString(timeText(time));
}

QString typeAndText(int type, const QString& text)
{
    return QStringLiteral("%1  %2").arg(type).arg(text);
}

// What messages say must not be taken for markup.
QVariant toolTip(const QString& text)
{
    return QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
}

const char* wordFor(Found::What what)
{
    switch (what) {
    case Found::What::damaged:
        return "damaged";
    case Found::What::truncated:
        return "truncated";
    case Found::What::misfit:
        return "does not fit";
    default:
        return "unknown type";
    }
}

}    // namespace

QString kindText(const KindModel& kind)
{
    return typeAndText(kind.typeNumber,
                       QString::fromStdString(kind.text.empty() ? kind.name : kind.text));
}

MessageModel::MessageModel(const Document& shown, Rereader& again)
    : document(shown), rereader(again)
{
    connect(&rereader, &Rereader::contentsCame, this, [this](quint64 from, quint64 until) {
        const int first = rowFrom(from);
        const int last = rowFrom(until) - 1;
        if (first <= last) {
            Q_EMIT dataChanged(index(first, content), index(last, content));
        }
    });
}

int MessageModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : rows;
}

int MessageModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant MessageModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columns) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return int(Qt::AlignVCenter | (section < type ? Qt::AlignRight : Qt::AlignLeft));
    }
    return role == Qt::DisplayRole
               ? QVariant(QString::fromLatin1(columnNames[std::size_t(section)]))
               : QVariant();
}

QVariant MessageModel::data(const QModelIndex& cell, int role) const
{
    if (!cell.isValid() || cell.row() >= rows) {
        return {};
    }
    const std::size_t place = placeOf(cell.row());
    const IndexEntry& entry = document.index()[place];
    switch (role) {
    case Qt::DisplayRole:
        return textOf(place, cell.column());
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter | (cell.column() < type ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::BackgroundRole:
        return backgroundOf(entry, cell.column());
    case Qt::ForegroundRole:
        return foregroundOf(entry, cell.column());
    case Qt::ToolTipRole:
        return cell.column() >= type ? toolTip(textOf(place, cell.column())) : QVariant();
    default:
        return {};
    }
}

QString MessageModel::textOf(std::size_t place, int column) const
{
    const IndexEntry& entry = document.index()[place];
    switch (column) {
    case number:
        return QString::number(place + 1);
    case byte:
        return QString::number(entry.begin);
    case received:
        return receivedText(document.receiveTimes(), place);
    case sentAt:
        return clockText(entry.time);
    case station:
        return numberOr(entry.station, IndexEntry::none);
    case sender:
        return numberOr(entry.mmsi, 0);
    case type:
        return typeText(entry);
    default:
        break;
    }
    const QString* const text = rereader.content(place);
    return text != nullptr ? *text : QStringLiteral("...");
}

QString MessageModel::typeText(const IndexEntry& entry) const
{
    const KindModel* const kind = kindOf(entry);
    if (entry.hasRecord() && kind != nullptr) {
        return kindText(*kind);
    }
    const QString word = QString::fromLatin1(wordFor(entry.kindOfFind()));
    return entry.type == IndexEntry::none ? word : typeAndText(entry.type, word);
}

const KindModel* MessageModel::kindOf(const IndexEntry& entry) const
{
    return entry.type == IndexEntry::none
               ? nullptr
               : document.format().modelOf(RTCM2_kind_of_type(entry.type));
}

QVariant MessageModel::backgroundOf(const IndexEntry& entry, int column) const
{
    const KindModel* const kind = column == type ? kindOf(entry) : nullptr;
    return kind != nullptr ? QVariant(kindColour(kind->number(), QGuiApplication::palette()))
                           : QVariant();
}

QVariant MessageModel::foregroundOf(const IndexEntry& entry, int column) const
{
    const bool isTold = column == type || column == content;
    return isTold && (!entry.hasRecord() || entry.isShort != 0)
               ? QVariant(troubleColour(QGuiApplication::palette()))
               : QVariant();
}

void MessageModel::choose(const Selection* selection)
{
    beginResetModel();
    chosen = selection;
    rows = static_cast<int>(available());
    endResetModel();
}

// A reading for the chosen ones may be ahead of the one for the index.
std::size_t MessageModel::available() const
{
    const std::size_t indexed = document.index().size();
    return chosen != nullptr ? countBefore(*chosen, chosen->size(), indexed) : indexed;
}

void MessageModel::refresh()
{
    const int count = static_cast<int>(available());
    if (count > rows) {
        beginInsertRows({}, rows, count - 1);
        rows = count;
        endInsertRows();
    }
    lookForSenders(document.index().size());
}

void MessageModel::lookForSenders(std::size_t until)
{
    const MessageIndex& entries = document.index();
    while (!senders && searched < until) {
        senders = entries[searched++].mmsi != 0;
    }
    if (senders && searched != 0) {
        searched = 0;
        Q_EMIT sendersCame();
    }
}

std::size_t MessageModel::placeOf(int row) const
{
    const auto place = static_cast<std::size_t>(row);
    return chosen != nullptr ? (*chosen)[place] : place;
}

int MessageModel::rowFrom(std::size_t place) const
{
    if (chosen == nullptr) {
        return static_cast<int>(std::min(place, static_cast<std::size_t>(rows)));
    }
    return static_cast<int>(countBefore(*chosen, static_cast<std::size_t>(rows), place));
}

// Compiled here instead of on its own.
#include "moc_MessageModel.cpp"
