#include "viewer/window/KeysDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMenu>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QString keysOf(const QAction& action)
{
    QStringList keys;
    for (const QKeySequence& sequence : action.shortcuts()) {
        keys.append(sequence.toString(QKeySequence::NativeText));
    }
    return keys.join(QStringLiteral(", "));
}

void addRow(QTreeWidgetItem& group, const QString& what, const QString& keys)
{
    group.addChild(new QTreeWidgetItem({what, keys}));
}

void addMenu(QTreeWidget& tree, const QMenu& menu)
{
    auto* const group = new QTreeWidgetItem(&tree, {menu.title().remove(QLatin1Char('&')), {}});
    for (const QAction* const action : menu.actions()) {
        if (!action->shortcuts().isEmpty()) {
            addRow(*group, action->text().remove(QLatin1Char('&')), keysOf(*action));
        }
    }
}

void addList(QTreeWidget& tree)
{
    auto* const group = new QTreeWidgetItem(&tree, {QStringLiteral("List and filter"), {}});
    addRow(*group, QStringLiteral("Row by row, page by page"),
           QStringLiteral("Up, Down, Page Up, Page Down"));
    addRow(*group, QStringLiteral("Choose several rows"), QStringLiteral("Shift with these"));
    addRow(*group, QStringLiteral("From part to part of the window"),
           QStringLiteral("Tab, Shift+Tab"));
    addRow(*group, QStringLiteral("Apply the filter and go to the list"), QStringLiteral("Return"));
    addRow(*group, QStringLiteral("Take the filter away"), QStringLiteral("Escape in it"));
}

void addPanes(QTreeWidget& tree)
{
    auto* const group = new QTreeWidgetItem(&tree, {QStringLiteral("Fields and bits"), {}});
    addRow(*group, QStringLiteral("Open and close elements"), QStringLiteral("Right, Left"));
    addRow(*group, QStringLiteral("Bit by bit, word by word"),
           QStringLiteral("Left, Right, Up, Down"));
    addRow(*group, QStringLiteral("Field by field"), QStringLiteral("Ctrl+Left, Ctrl+Right"));
    addRow(*group, QStringLiteral("First and last bit of a word, of the message"),
           QStringLiteral("Home, End, with Ctrl"));
    addRow(*group, QStringLiteral("Mark bits"), QStringLiteral("Shift with these"));
    addRow(*group, QStringLiteral("Copy rows, or bits"), QStringLiteral("Ctrl+C"));
    addRow(*group, QStringLiteral("Copy bits as hexadecimal"), QStringLiteral("Ctrl+Alt+C"));
}

void addPictures(QTreeWidget& tree)
{
    auto* const group = new QTreeWidgetItem(&tree, {QStringLiteral("Lanes and plot"), {}});
    addRow(*group, QStringLiteral("Zoom, and all of the time"), QStringLiteral("+, -, 0, wheel"));
    addRow(*group, QStringLiteral("Move, by pages, to the ends"),
           QStringLiteral("Left, Right, Page Up, Page Down, Home, End"));
    addRow(*group, QStringLiteral("Mark a stretch, zoom to it, forget it"),
           QStringLiteral("Shift and drag, Z, Escape"));
    addRow(*group, QStringLiteral("Choose the lane"), QStringLiteral("Up, Down"));
    addRow(*group, QStringLiteral("To the message or value before and behind"),
           QStringLiteral("Ctrl+Left, Ctrl+Right"));
    addRow(*group, QStringLiteral("Choose the message of a value"), QStringLiteral("Return"));
    addRow(*group, QStringLiteral("To the next jump of a line"), QStringLiteral("J"));
}

}    // namespace

KeysDialog::KeysDialog(const QMenuBar& menus, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Keys"));
    auto* const tree = new QTreeWidget;
    tree->setHeaderLabels({QStringLiteral("What"), QStringLiteral("Keys")});
    for (const QAction* const action : menus.actions()) {
        if (action->menu() != nullptr) {
            addMenu(*tree, *action->menu());
        }
    }
    addList(*tree);
    addPanes(*tree);
    addPictures(*tree);
    tree->expandAll();
    tree->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(tree);
    layout->addWidget(buttons);
    resize(560, 620);
}
