// What can be done in a pane by key and menu. Where the keys mean something else in the window
// around it, they are the pane's as long as they go there.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QWidget>

#include <functional>

class PaneActions : public QObject {
    Q_OBJECT

public:
    PaneActions(QList<QWidget*> inViews, QObject* parent);

    void add(const QString& text, const QKeySequence& keys, const std::function<void()>& work);

protected:
    bool eventFilter(QObject* view, QEvent* event) override;

private:
    QList<QWidget*> views;
};
