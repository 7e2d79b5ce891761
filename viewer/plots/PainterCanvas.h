// Pictures painted by Qt: in a window, or into an image.
#pragma once

#include "pictures/Canvas.h"

#include <QPainter>
#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

class PainterCanvas : public Canvas {
public:
    // What belongs together, where it is and what it is.
    struct Group {
        QRectF place;
        QString title;
    };

    // The painter belongs to the caller; its font is the one that is written with.
    PainterCanvas(QPainter& target, bool onDark);

    // The ground of the picture.
    void fill(const Box& box);

    void line(const Point& from, const Point& to, const Pen& pen) override;
    void polyline(std::span<const Point> points, const Pen& pen) override;
    void dots(std::span<const Point> points, const Pen& pen) override;
    void bars(std::span<const Bar> upright, const Pen& pen) override;
    void rectangle(const Box& box, const Ink& fill) override;
    void text(const Point& at, std::string_view characters, const Lettering& how) override;
    void beginGroup(std::string_view title) override;
    void endGroup() override;
    void beginClip(const Box& box) override;
    void endClip() override { painter.restore(); }
    double widthOf(std::string_view characters, double size) const override;

    const std::vector<Group>& groups() const { return all; }

private:
    void use(const Pen& pen, bool isSmooth);
    void drawDense(const QPolygonF& polygon, const Pen& pen);
    void reach(const QRectF& place);
    QFont fontOf(double size, bool isBold) const;

    QPainter& painter;
    bool isOnDark;
    std::size_t dotCount = 0;
    std::vector<Group> all;
    std::optional<Group> open;
};
