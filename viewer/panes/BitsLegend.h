// What the colours behind bits mean.
#pragma once

#include <QWidget>

class BitsLegend : public QWidget {
    Q_OBJECT

public:
    explicit BitsLegend(QWidget* parent = nullptr);

    QSize sizeHint() const override { return {200, heightForWidth(width())}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    // Calls back with each item and its place, in as many lines as it takes; gives the height.
    template <class Draw>
    int layOut(int width, Draw draw) const;
};
