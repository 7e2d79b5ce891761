// Lanes over time: a lane for each kind of message of each station.
#pragma once

#include "viewer/plots/LaneData.h"
#include "viewer/plots/TimePicture.h"

#include "format/FormatModel.h"

#include <QString>

#include <memory>
#include <vector>

class LanesView : public TimePicture {
    Q_OBJECT

public:
    LanesView(const FormatModel& model, const MessageIndex& read, const IndexTimes& timesOfIt,
              TimeWindow& timeWindow);

    // `all` knows the rates, `part` what is shown, with some room at its sides.
    void setData(std::shared_ptr<const LaneData> all, std::shared_ptr<const LaneData> part);
    void draw(PainterCanvas& canvas, const Box& box) override;

Q_SIGNALS:
    void entryChosen(quint64 place);
    // The message beneath the pointer, in words; empty where there is none.
    void entryPointed(const QString& text);

protected:
    Box frameIn(PainterCanvas& canvas, const Box& box) override;
    void pressedAt(const QPointF& position) override;
    void pointedAt(const std::optional<QPointF>& position) override;
    void drawMarks(QPainter& painter, const Box& frame) override;
    QString emptyText() const override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // Damage has a lane without a key.
    using LaneKey = std::optional<Traffic::Key>;

    void listLanes();
    Lanes lanesNow(const TimeScale& times) const;
    Lane laneFor(const LaneKey& key, const TimeScale& times) const;
    void addGaps(Lane& lane, const Traffic::Key& key, const LaneData& known,
                 const TimeScale& times) const;
    std::string labelOf(const Traffic::Key& key) const;
    std::string title() const;
    QString textOf(std::size_t place) const;
    bool isIn(const LaneKey& wanted, std::size_t place) const
    {
        return laneOf(index[place]) == wanted;
    }
    std::optional<std::size_t> laneAt(double y) const;
    std::optional<std::size_t> entryAt(const QPointF& position) const;
    std::optional<std::size_t> neighbour(bool isLater) const;
    void fitHeight();

    const FormatModel& format;
    const MessageIndex& index;
    const IndexTimes& indexTimes;
    std::shared_ptr<const LaneData> whole;
    std::shared_ptr<const LaneData> shown;
    std::vector<LaneKey> keys;
    std::size_t stations = 0;
    std::size_t current = 0;    // the one that keys act on
    std::optional<std::size_t> pointed;
};
