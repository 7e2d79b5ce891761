// Where people write which messages they want to see.
#pragma once

#include "format/FormatModel.h"

#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QStringListModel>
#include <QTimer>
#include <QToolButton>
#include <QWidget>

struct FilterError;

class FilterLine : public QWidget {
    Q_OBJECT

public:
    explicit FilterLine(const FormatModel& model);

    QString text() const { return line->text(); }
    void setText(const QString& text);
    // Whether damaged places and the like are to be shown among what is chosen.
    bool wantsTroubles() const { return troubles->isChecked(); }

    void showError(const FilterError& error);
    void clearError();

public Q_SLOTS:
    void takeFocus();

Q_SIGNALS:
    // A moment after something else was written, and at once when Return is pressed.
    void changed();
    // The work goes on in the list.
    void left();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void suggest();
    void insertName(const QString& name);
    void underline(int from);
    int beginOfWord() const;

    QLineEdit* line;
    QToolButton* troubles;
    QLabel* problem;
    QStringListModel names;
    QCompleter completer;
    QTimer timer;
};
