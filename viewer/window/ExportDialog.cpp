#include "viewer/window/ExportDialog.h"

#include "filter/FilterError.h"

#include <QApplication>
#include <QFileDialog>
#include <QFormLayout>
#include <QPushButton>

#include <array>

namespace {

constexpr int lookEveryMoment = 100;    // milliseconds

struct FormRow {
    ExportForm form;
    const char* label;
    const char* suffix;
};

constexpr std::array<FormRow, 7> formRows = {{
    {ExportForm::ndjson, "NDJSON: a JSON object a line", "ndjson"},
    {ExportForm::json, "JSON: one array", "json"},
    {ExportForm::csv, "CSV: a file for each type, in a folder", ""},
    {ExportForm::sqlite, "SQLite: a database, added to if there is one", "db"},
    {ExportForm::stream, "The stream itself", "rtcm2"},
    {ExportForm::packed, "Packed messages", "packed"},
    {ExportForm::hex, "Packed messages as hexadecimal lines", "hex"},
}};

}    // namespace

ExportDialog::ExportDialog(DocumentView& exported, QWidget* parent)
    : QDialog(parent), view(exported), form(new QComboBox),
      scaled(new QCheckBox(QStringLiteral("&Quantities with their units, not numbers as sent"))),
      filtered(new QCheckBox(QStringLiteral("&Only what the filter shows"))), state(new QLabel),
      progress(new QProgressBar),
      buttons(new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Close))
{
    setWindowTitle(QStringLiteral("Export"));
    for (const FormRow& row : formRows) {
        form->addItem(QString::fromLatin1(row.label));
    }
    const bool hasFilter = !view.filterInUse().isEmpty();
    filtered->setEnabled(hasFilter);
    filtered->setChecked(hasFilter);
    state->setWordWrap(true);
    progress->setVisible(false);
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::begin);
    connect(buttons, &QDialogButtonBox::rejected, this, &ExportDialog::reject);
    timer.setInterval(lookEveryMoment);
    connect(&timer, &QTimer::timeout, this, &ExportDialog::look);
    auto* const layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("&Form:"), form);
    layout->addRow(scaled);
    layout->addRow(filtered);
    layout->addRow(state);
    layout->addRow(progress);
    layout->addRow(buttons);
    setMinimumWidth(460);
}

QString ExportDialog::askForPath()
{
    const FormRow& row = formRows[static_cast<std::size_t>(form->currentIndex())];
    if (row.form == ExportForm::csv) {
        return QFileDialog::getExistingDirectory(this, QStringLiteral("Export into"));
    }
    return QFileDialog::getSaveFileName(
        this, QStringLiteral("Export to"),
        QStringLiteral("messages.") + QString::fromLatin1(row.suffix), {}, nullptr,
        row.form == ExportForm::sqlite ? QFileDialog::DontConfirmOverwrite
                                       : QFileDialog::Options());
}

void ExportDialog::begin()
{
    const QString path = askForPath();
    if (path.isEmpty()) {
        return;
    }
    if (QFileInfo(path) == QFileInfo(view.document().name())) {
        state->setText(QStringLiteral("This is the file that is read: choose another one."));
        return;
    }
    const std::string where = filtered->isChecked() ? view.filterInUse().toStdString() : "";
    job = std::make_unique<ExportJob>(
        view.format(), view.document().again(),
        ExportJob::Options{.form = formRows[static_cast<std::size_t>(form->currentIndex())].form,
                           .path = path.toStdString(),
                           .where = where,
                           .values = scaled->isChecked() ? Values::scaled : Values::raw,
                           .program =
                               "rtcm2-view " + QApplication::applicationVersion().toStdString()});
    buttons->button(QDialogButtonBox::Save)->setEnabled(false);
    buttons->button(QDialogButtonBox::Close)->setText(QStringLiteral("Cancel"));
    state->setText(QStringLiteral("Writing %1").arg(path));
    progress->setRange(0, view.document().bytesRead() == 0 ? 0 : 100);
    progress->show();
    timer.start();
}

void ExportDialog::look()
{
    if (!job->isFinished()) {
        const std::uint64_t all = std::max<std::uint64_t>(view.document().bytesRead(), 1);
        progress->setValue(static_cast<int>(100 * job->bytesRead() / all));
        return;
    }
    timer.stop();
    state->setText(job->problem().empty() ? QStringLiteral("%1 messages written").arg(job->count())
                                          : QStringLiteral("Nothing was written: ") +
                                                QString::fromStdString(job->problem()));
    job.reset();
    progress->hide();
    buttons->button(QDialogButtonBox::Save)->setEnabled(true);
    buttons->button(QDialogButtonBox::Close)->setText(QStringLiteral("Close"));
}

// While it writes, it only ends that.
void ExportDialog::reject()
{
    if (job != nullptr) {
        job->cancel();
    } else {
        QDialog::reject();
    }
}
