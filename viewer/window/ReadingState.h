// What is being read of a document and how far it is, for people.
#pragma once

#include "viewer/document/Document.h"
#include "viewer/document/Readings.h"

#include "base/RecentRate.h"

#include <QElapsedTimer>
#include <QString>

class ReadingState {
public:
    // Both must outlive it.
    ReadingState(const Document& read, const Readings& again);

    // Bytes may have come.
    void measure();

    bool isWorking() const;
    // `held` messages have come that are not shown, as long as that pauses.
    QString text(bool isPaused, std::size_t held) const;
    // Of a hundred; -1 where nothing is done or it is not known.
    int progress() const;
    // How many messages there are, of which so many rows are shown.
    QString counts(int rows) const;

private:
    QString liveText() const;

    const Document& document;
    const Readings& readings;
    QElapsedTimer clock;
    RecentRate rate;    // of a live input
    std::uint64_t lastBytes = 0;
    RecentRate::Clock::time_point lastCame = RecentRate::Clock::now();
};

// "4,311"
QString grouped(qulonglong number);
