// Which part of a document's time its pictures show, and what is marked in it: one for all pictures
// of a document, so that they show the same.
#pragma once

#include "pictures/Axis.h"
#include "pictures/Lanes.h"

#include <QObject>

#include <optional>

// All times in seconds of the document's clock.
class TimeWindow : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // The time of all messages; as long as all of it is shown, so is what is added.
    void setWhole(const Range& all);
    const Range& whole() const { return all; }
    // Whether any message has told a time.
    bool hasTime() const { return isKnown; }

    // Cut to what there is, and never too short to be seen.
    void show(const Range& wanted);
    void showAll();
    const Range& shown() const { return part; }
    bool showsAll() const { return isAll; }
    // The time `around` stays where it is; a factor above 1 shows more.
    void zoom(double factor, double around);
    void move(double seconds);
    // So that a time is in the middle, unless it is seen already.
    void reveal(double seconds);

    // The message that is chosen.
    void setChosen(std::optional<double> seconds);
    const std::optional<double>& chosen() const { return chosenTime; }
    // A stretch that is meant by what is done with a part.
    void setStretch(const std::optional<Stretch>& wanted);
    // The stretch will not change any more for now.
    void endStretch() { Q_EMIT stretchMarked(); }
    const std::optional<Stretch>& stretch() const { return marked; }

Q_SIGNALS:
    void shownChanged();
    void marksChanged();
    void stretchMarked();

private:
    static constexpr double shortest = 0.5;    // seconds

    Range all;
    Range part;
    bool isAll = true;
    bool isKnown = false;
    std::optional<double> chosenTime;
    std::optional<Stretch> marked;
};
