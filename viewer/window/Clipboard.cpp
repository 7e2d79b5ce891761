#include "viewer/window/Clipboard.h"

#include "viewer/document/MessageReader.h"
#include "viewer/document/RowText.h"

#include "export/JsonExport.h"
#include "format/PackedText.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QMessageBox>
#include <QTemporaryDir>

namespace {

constexpr std::size_t mostRows = 10'000;

// Hands messages to a sink as the whole input would.
void readInto(DocumentView& view, const std::vector<std::size_t>& places,
              const MessageReader::Take& take)
{
    const Document& document = view.document();
    MessageReader reader(document.format(), document.again(), document.index());
    reader.read(places, take, [] { return false; });
}

QString jsonOf(DocumentView& view, const std::vector<std::size_t>& places)
{
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("copy"));
    const MessageFilter all(view.format(), {});
    Output output;
    if (!output.open(name.toStdString())) {
        return {};
    }
    JsonExport sink(output, {.withTexts = true, .values = Values::both}, all.kinds());
    readInto(view, places, [&](std::size_t, const Found& found) { sink.take(found); });
    sink.finish();
    QFile file(name);
    return output.close() && file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                                            : QString();
}

QString hexOf(DocumentView& view, const std::vector<std::size_t>& places)
{
    std::string text;
    readInto(view, places, [&](std::size_t, const Found& found) {
        appendHex(text, found.bytes);
        text += '\n';
    });
    return QString::fromStdString(text);
}

// The columns that are shown, with tabulators between them, and their names above.
QString columnsOf(DocumentView& view, const std::vector<std::size_t>& places)
{
    const MessageModel& model = view.messages();
    const RowText rows(view.format());
    QStringList shown;
    for (int column = 0; column < MessageModel::content; ++column) {
        if (!view.list().header().isSectionHidden(column)) {
            shown.append(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        }
    }
    QString text = shown.join(QLatin1Char('\t')) + QStringLiteral("\tContent\n");
    Text content;
    readInto(view, places, [&](std::size_t place, const Found& found) {
        const int row = model.rowFrom(place);
        for (int column = 0; column < MessageModel::content; ++column) {
            if (!view.list().header().isSectionHidden(column)) {
                text += model.data(model.index(row, column), Qt::DisplayRole).toString() +
                        QLatin1Char('\t');
            }
        }
        content.clear();
        rows.append(content, found);
        content.append('\n');
        text += QString::fromUtf8(content.view().data(), static_cast<qsizetype>(content.size()));
    });
    return text;
}

}    // namespace

QString textOfRows(DocumentView& view, CopyForm form, const std::vector<std::size_t>& places)
{
    switch (form) {
    case CopyForm::json:
        return jsonOf(view, places);
    case CopyForm::hex:
        return hexOf(view, places);
    default:
        return columnsOf(view, places);
    }
}

void copyRows(DocumentView& view, CopyForm form)
{
    const std::vector<std::size_t> places = view.chosenPlaces(mostRows + 1);
    if (places.size() > mostRows) {
        QMessageBox::information(&view, QStringLiteral("Copy"),
                                 QStringLiteral("More than %1 messages are chosen: export them "
                                                "instead.")
                                     .arg(mostRows));
    } else if (!places.empty()) {
        QApplication::clipboard()->setText(textOfRows(view, form, places));
    }
}
