// A field over time: a line for each value of a key.
#pragma once

#include "viewer/plots/TimePicture.h"

#include "curves/FieldCurves.h"
#include "pictures/Plot.h"

#include <QString>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

class PlotView : public TimePicture {
    Q_OBJECT

public:
    using Key = FieldCurves::Key;

    // What is plotted, in words; each but the first may be empty.
    struct Texts {
        std::string field;
        std::string key;
        std::string issue;
        std::string unit;
    };
    // A line, with what its legend says.
    struct Line {
        Key key{};
        std::string name;
        Pen pen{};
        const Curve* curve = nullptr;
    };
    // Near the pointer.
    struct Near {
        Key key{};
        Point point{};
    };

    explicit PlotView(TimeWindow& timeWindow);

    void setTexts(const Texts& wanted);
    std::string title() const;
    std::string note() const;
    // Lines keep their colours until they are forgotten.
    void setData(std::shared_ptr<const FieldCurves> collected);
    void forgetLines();
    // Why nothing is shown; empty where that is for no reason.
    void setProblem(const QString& text);

    const std::vector<Line>& lines() const { return all; }
    void setHidden(const std::set<Key>& keys);
    const std::set<Key>& hidden() const { return hiddenKeys; }

    void draw(PainterCanvas& canvas, const Box& box) override;
    // On any canvas, with a legend of all lines below it.
    void drawWhole(Canvas& canvas, const Box& box) const;

    // Where the pointer or the keys have put the cursor.
    const std::optional<double>& cursor() const { return cursorTime; }
    void setCursor(std::optional<double> seconds);
    // The value of a line that stands nearest to the cursor, unless it is far from it.
    std::optional<Point> valueAtCursor(const Line& line) const;
    // The greatest steps of the lines that are seen, the greatest one first.
    std::vector<std::pair<Key, Step>> greatestSteps() const;
    bool isSeen(const Key& key) const { return hiddenKeys.count(key) == 0; }

Q_SIGNALS:
    void cursorMoved();
    void pointChosen(const PlotView::Near& point);
    void jumpWanted();

protected:
    Box frameIn(PainterCanvas& canvas, const Box& box) override;
    void pressedAt(const QPointF& position) override;
    void pointedAt(const std::optional<QPointF>& position) override;
    void drawMarks(QPainter& painter, const Box& frame) override;
    QString emptyText() const override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void listLines();
    std::string nameOf(const Key& key, const FieldTrack& track) const;
    Plot plotNow(const TimeScale& times) const;
    Range valuesShown() const;
    QPointF placeOf(const Point& point) const;
    std::optional<Near> nearest(const QPointF& position) const;
    std::optional<Near> neighbour(bool isLater) const;
    void chooseAtCursor();

    Texts texts;
    bool hasSeveralStations = false;
    QString problem;
    std::shared_ptr<const FieldCurves> curves;
    std::vector<Line> all;
    std::map<Key, unsigned> numbers;    // of the colours
    std::set<Key> hiddenKeys;
    Range axis;    // of values, as it is drawn
    std::optional<double> cursorTime;
    std::optional<Near> nearPointer;
};
