// The messages of a document as rows: all of them, or those that were chosen.
#pragma once

#include "viewer/document/Document.h"
#include "viewer/document/Rereader.h"

#include <QAbstractTableModel>

#include <vector>

// Type and what it is about, as a row has them.
QString kindText(const KindModel& kind);

class MessageModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { number, byte, received, sentAt, station, sender, type, content, columns };

    // Both must outlive the model.
    MessageModel(const Document& shown, Rereader& again);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& cell, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Shows these messages alone, or all of them where there are none to show; they must outlive
    // that.
    void choose(const Selection* selection);
    // Shows what has come since.
    void refresh();
    // How many rows there are to come with that.
    std::size_t held() const { return available() - static_cast<std::size_t>(rows); }

    // Places in the index.
    std::size_t placeOf(int row) const;
    // The first row of a message at this place or behind it; the number of rows where there is
    // none.
    int rowFrom(std::size_t place) const;

    // Whether some message came by AIS.
    bool hasSenders() const { return senders; }

Q_SIGNALS:
    void sendersCame();

private:
    std::size_t available() const;
    void lookForSenders(std::size_t until);
    QString textOf(std::size_t place, int column) const;
    QString typeText(const IndexEntry& entry) const;
    QVariant backgroundOf(const IndexEntry& entry, int column) const;
    QVariant foregroundOf(const IndexEntry& entry, int column) const;
    const KindModel* kindOf(const IndexEntry& entry) const;

    const Document& document;
    Rereader& rereader;
    const Selection* chosen = nullptr;
    int rows = 0;
    std::size_t searched = 0;    // entries, for senders
    bool senders = false;
};
