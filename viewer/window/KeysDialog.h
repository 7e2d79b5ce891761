// What can be done with which keys.
#pragma once

#include <QDialog>
#include <QMenuBar>

class KeysDialog : public QDialog {
public:
    // Tells of everything in the menus, and of what the list knows by itself.
    KeysDialog(const QMenuBar& menus, QWidget* parent);
};
