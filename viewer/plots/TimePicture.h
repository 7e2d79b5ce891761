// A picture over time in a window: zoomed by the wheel, moved by dragging, by keys as well.
#pragma once

#include "viewer/plots/PainterCanvas.h"
#include "viewer/plots/TimeWindow.h"

#include <QPixmap>
#include <QPoint>
#include <QWidget>

#include <optional>

class TimePicture : public QWidget {
    Q_OBJECT

public:
    explicit TimePicture(TimeWindow& timeWindow);

    // The picture at this size, without what follows the pointer.
    virtual void draw(PainterCanvas& canvas, const Box& box) = 0;
    // So many pixels of the screen as one of the picture's: texts are as large as others.
    double scale() const;

protected:
    // Where time runs in the picture.
    virtual Box frameIn(PainterCanvas& canvas, const Box& box) = 0;
    virtual void pressedAt(const QPointF& position) = 0;
    // The pointer is there, or nowhere.
    virtual void pointedAt(const std::optional<QPointF>& position) = 0;
    // Over the picture.
    virtual void drawMarks(QPainter& painter, const Box& frame);
    // What is shown instead of a picture where there is none.
    virtual QString emptyText() const = 0;

    // What is drawn has changed.
    void redraw();
    const Box& frame() const { return framePlace; }
    double timeAt(double x) const;
    double xAt(double seconds) const;
    double secondsPerPixel() const;
    void drawUpright(QPainter& painter, double seconds, const QPen& pen) const;

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    TimeWindow& window;

private:
    void drawPicture();
    void drag(const QPointF& position);
    QPointF inPicture(const QPointF& position) const { return position / scale(); }

    QPixmap picture;    // null where it has to be drawn
    std::vector<PainterCanvas::Group> groups;
    Box framePlace;
    std::optional<QPointF> pressed;    // where, in the picture
    Range shownWhenPressed;
    bool isDragged = false;
    bool marksStretch = false;
};
