// Rows of bits, painted, and chosen with mouse and keys.
#pragma once

#include "viewer/panes/BitSelection.h"
#include "viewer/panes/PaneColours.h"

#include <QWidget>

class BitsView : public QWidget {
    Q_OBJECT

public:
    explicit BitsView(BitSelection& selected, QWidget* parent = nullptr);

    void setTable(BitTable newTable);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    // Where the bit is painted; empty where it is not.
    QRect rectOf(WordBit bit) const;
    // The bit there, or none.
    WordBit bitAt(const QPoint& point) const;

Q_SIGNALS:
    // The place is to be seen.
    void wanted(const QRect& place);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void measure();
    int bitsIn(int row) const;
    int columns() const;
    int topOf(int row) const;
    void goTo(WordBit bit, bool isMarking);
    WordBit moved(WordBit from, const QKeyEvent& event) const;
    WordBit movedNear(WordBit from, int key) const;
    WordBit movedFar(WordBit from, int key) const;
    WordBit stepped(WordBit from, int step) const;
    WordBit nextField(WordBit from, int step) const;
    void paintHead(QPainter& painter) const;
    void paintRow(QPainter& painter, const PaneColours::Bits& colours, int row) const;
    void paintBit(QPainter& painter, const PaneColours::Bits& colours, WordBit bit) const;
    QColor colourOf(const PaneColours::Bits& colours, WordBit bit) const;

    BitSelection& selection;
    BitTable table;
    QSize letter;    // of the bits' font, with room around it
    int byteLeft = 0;
    int hexLeft = 0;
    int bitsLeft = 0;
    int noteLeft = 0;
    std::vector<bool> isOdd;    // by packed bit: of fields in turn
};
