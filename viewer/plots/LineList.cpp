#include "viewer/plots/LineList.h"

#include "format/FieldText.h"
#include "viewer/colours/Ground.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QSignalBlocker>

#include <cmath>

LineList::LineList(PlotView& shownBeside) : plot(shownBeside)
{
    setColumnCount(2);
    setHeaderLabels({tr("Line"), tr("At the cursor")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAccessibleName(tr("Lines of the plot"));
    header()->setStretchLastSection(true);
    connect(this, &QTreeWidget::itemChanged, this, &LineList::hideUnchecked);
    connect(&plot, &PlotView::cursorMoved, this, &LineList::showValues);
}

QIcon LineList::iconOf(const Pen& pen) const
{
    constexpr int width = 24;
    constexpr int height = 12;
    const qreal ratio = devicePixelRatioF();
    QPixmap sign(QSize(width, height) * ratio);
    sign.setDevicePixelRatio(ratio);
    sign.fill(Qt::transparent);
    QPainter painter(&sign);
    PainterCanvas canvas(painter, isDark(palette()));
    Pen thicker = pen;
    thicker.width = 2;
    canvas.line({0, height / 2.0}, {width, height / 2.0}, thicker);
    return sign;
}

void LineList::refresh()
{
    const QSignalBlocker isQuiet(this);
    const auto& lines = plot.lines();
    setIconSize({24, 12});
    while (topLevelItemCount() > static_cast<int>(lines.size())) {
        delete takeTopLevelItem(topLevelItemCount() - 1);
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        QTreeWidgetItem* item = topLevelItem(static_cast<int>(i));
        if (item == nullptr) {
            item = new QTreeWidgetItem(this);
        }
        item->setText(0, QString::fromStdString(lines[i].name));
        item->setIcon(0, iconOf(lines[i].pen));
        item->setCheckState(0, plot.isSeen(lines[i].key) ? Qt::Checked : Qt::Unchecked);
    }
    resizeColumnToContents(0);
    showValues();
}

void LineList::changeEvent(QEvent* event)
{
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        refresh();
    }
}

QString LineList::valueText(double value) const
{
    const char* const meaning = field != nullptr && field->hasTexts() && std::trunc(value) == value
                                    ? meaningOf(*field, static_cast<std::int64_t>(value))
                                    : nullptr;
    return meaning != nullptr ? numberText(value) + "  " + QString::fromUtf8(meaning)
                              : numberText(value);
}

void LineList::showValues()
{
    const QSignalBlocker isQuiet(this);
    const auto& lines = plot.lines();
    const int count = std::min(topLevelItemCount(), static_cast<int>(lines.size()));
    for (int i = 0; i < count; ++i) {
        const auto value = plot.valueAtCursor(lines[static_cast<std::size_t>(i)]);
        topLevelItem(i)->setText(1, value ? valueText(value->y) : QString());
    }
}

void LineList::hideUnchecked()
{
    std::set<PlotView::Key> hidden;
    const auto& lines = plot.lines();
    for (int i = 0; i < topLevelItemCount() && i < static_cast<int>(lines.size()); ++i) {
        if (topLevelItem(i)->checkState(0) == Qt::Unchecked) {
            hidden.insert(lines[static_cast<std::size_t>(i)].key);
        }
    }
    plot.setHidden(hidden);
}

QString numberText(double value)
{
    return QString::number(value, 'g', 12);
}

// Compiled here instead of on its own.
#include "moc_LineList.cpp"
