// Asks in which form messages are to be written and where, and writes them.
#pragma once

#include "viewer/document/ExportJob.h"
#include "viewer/window/DocumentView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>

#include <memory>

class ExportDialog : public QDialog {
public:
    ExportDialog(DocumentView& exported, QWidget* parent);

    void reject() override;

private:
    void begin();
    void look();
    QString askForPath();

    DocumentView& view;
    QComboBox* form;
    QCheckBox* scaled;
    QCheckBox* filtered;
    QLabel* state;
    QProgressBar* progress;
    QDialogButtonBox* buttons;
    QTimer timer;
    std::unique_ptr<ExportJob> job;
};
