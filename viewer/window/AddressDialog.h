// Asks for an input that is no file, or how a file is to be read.
#pragma once

#include "viewer/document/Input.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QSpinBox>

class AddressDialog : public QDialog {
public:
    explicit AddressDialog(QWidget* parent);

    // As it was asked for; remembers the address.
    Input input() const;

private:
    QComboBox* address;
    QComboBox* form;
    QSpinBox* mode;
    QCheckBox* follows;
};
