// The lines of a plot: their colours, which of them are shown, and their values at the cursor.
#pragma once

#include "viewer/plots/PlotView.h"

#include <QTreeWidget>

class LineList : public QTreeWidget {
    Q_OBJECT

public:
    explicit LineList(PlotView& shownBeside);

    // The lines of the plot have changed.
    void refresh();
    void showValues();
    // Of the field whose values are shown, which may have texts.
    void setField(const FieldModel* shown) { field = shown; }

protected:
    // Another theme has other colours.
    void changeEvent(QEvent* event) override;

private:
    void hideUnchecked();
    QString valueText(double value) const;
    QIcon iconOf(const Pen& pen) const;

    PlotView& plot;
    const FieldModel* field = nullptr;
};

// A value as people read it.
QString numberText(double value);
