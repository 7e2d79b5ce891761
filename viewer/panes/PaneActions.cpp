#include "viewer/panes/PaneActions.h"

#include <QAction>
#include <QKeyEvent>

#include <algorithm>

PaneActions::PaneActions(QList<QWidget*> inViews, QObject* parent)
    : QObject(parent), views(std::move(inViews))
{
    for (QWidget* const view : std::as_const(views)) {
        view->setContextMenuPolicy(Qt::ActionsContextMenu);
        view->installEventFilter(this);
    }
}

void PaneActions::add(const QString& text, const QKeySequence& keys,
                      const std::function<void()>& work)
{
    auto* const action = new QAction(text, this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, work);
    for (QWidget* const view : std::as_const(views)) {
        view->addAction(action);
    }
}

bool PaneActions::eventFilter(QObject* view, QEvent* event)
{
    const bool isPressed = event->type() == QEvent::KeyPress;
    if (!isPressed && event->type() != QEvent::ShortcutOverride) {
        return QObject::eventFilter(view, event);
    }
    const QKeySequence keys(static_cast<QKeyEvent*>(event)->keyCombination());
    const QList<QAction*> actions = qobject_cast<QWidget*>(view)->actions();
    const auto wanted = std::find_if(actions.begin(), actions.end(), [&](const QAction* action) {
        return action->shortcut() == keys;
    });
    if (wanted == actions.end()) {
        return false;
    }
    event->accept();
    if (isPressed) {
        (*wanted)->trigger();
    }
    return true;
}

// Compiled here instead of on its own.
#include "moc_PaneActions.cpp"
