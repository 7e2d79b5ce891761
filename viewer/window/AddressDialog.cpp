#include "viewer/window/AddressDialog.h"

#include "sources/Passwords.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>

namespace {

constexpr int mostAddresses = 10;
constexpr auto addressKey = "recentAddresses";

}    // namespace

AddressDialog::AddressDialog(QWidget* parent)
    : QDialog(parent), address(new QComboBox), form(new QComboBox), mode(new QSpinBox),
      follows(new QCheckBox(QStringLiteral("&Follow a file at its end")))
{
    setWindowTitle(QStringLiteral("Open Address"));
    address->setEditable(true);
    address->addItems(QSettings().value(QLatin1String(addressKey)).toStringList());
    address->setCurrentIndex(-1);
    address->setMinimumContentsLength(48);
    address->lineEdit()->setPlaceholderText(QStringLiteral("tcp://host:port"));
    for (int i = 0; i < inputFormCount; ++i) {
        const auto each = static_cast<InputForm>(i);
        form->addItem(QStringLiteral("%1: %2").arg(QString::fromLatin1(nameOf(each)),
                                                   QString::fromLatin1(aboutForm(each))));
    }
    mode->setRange(0, 255);
    auto* const help = new QLabel(
        QStringLiteral("tcp://HOST:PORT    what a server sends\n"
                       "ntrip://[USER[:PASSWORD]@]HOST[:PORT]/MOUNTPOINT    a stream of a caster\n"
                       "udp://:PORT, udp://GROUP:PORT    datagrams\n"
                       "serial:/dev/ttyUSB0?baud=38400    a serial line\n"
                       "or the name of a file"));
    help->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel);
    QPushButton* const openButton = buttons->button(QDialogButtonBox::Open);
    openButton->setEnabled(false);
    connect(address, &QComboBox::editTextChanged, openButton, [openButton](const QString& text) {
        openButton->setEnabled(!text.trimmed().isEmpty());
    });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("&Address:"), address);
    layout->addRow(help);
    layout->addRow(QStringLiteral("F&orm:"), form);
    layout->addRow(QStringLiteral("&Mode byte of recordings:"), mode);
    layout->addRow(follows);
    layout->addRow(buttons);
}

Input AddressDialog::input() const
{
    const std::string name = takePassword(address->currentText().trimmed().toStdString());
    const QString shown = QString::fromStdString(name);
    QStringList known = QSettings().value(QLatin1String(addressKey)).toStringList();
    known.removeAll(shown);
    known.prepend(shown);
    QSettings().setValue(QLatin1String(addressKey), QStringList(known.mid(0, mostAddresses)));
    return {.name = name,
            .form = static_cast<InputForm>(form->currentIndex()),
            .follows = follows->isChecked(),
            .mode = static_cast<unsigned char>(mode->value())};
}
