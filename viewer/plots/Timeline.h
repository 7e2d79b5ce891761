// The time of a document, for all of its pictures: when its messages were sent, and what of that is
// shown and marked.
#pragma once

#include "viewer/document/Document.h"
#include "viewer/plots/IndexTimes.h"
#include "viewer/plots/TimeWindow.h"

#include <QObject>

class Timeline : public QObject {
    Q_OBJECT

public:
    // The document must outlive it.
    explicit Timeline(const Document& of);

    const Document& document() const { return source; }
    const IndexTimes& times() const { return indexTimes; }
    TimeWindow& window() { return timeWindow; }

public Q_SLOTS:
    // Marks the message of the index that is chosen, and shows its time.
    void showEntry(quint64 place);

Q_SIGNALS:
    void grown();
    // A stretch of the index was marked: from a place to one past the last; none where both are 0.
    void stretchChosen(quint64 from, quint64 until);

private:
    void grow();
    void tellStretch();

    const Document& source;
    IndexTimes indexTimes;
    TimeWindow timeWindow;
};
