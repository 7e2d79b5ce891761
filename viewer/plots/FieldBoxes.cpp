#include "viewer/plots/FieldBoxes.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

namespace {

QString titleOf(const PlotField& field)
{
    const QString name = QString::fromStdString(field.name);
    return field.unit.empty() ? name : name + " [" + QString::fromStdString(field.unit) + "]";
}

QLabel* labelFor(const QString& text, QWidget* buddy)
{
    auto* const label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

}    // namespace

FieldBoxes::FieldBoxes(const FormatModel& model)
    : format(model), fieldBox(new QComboBox), keyBox(new QComboBox), issueBox(new QComboBox)
{
    fieldBox->setEditable(true);
    fieldBox->setInsertPolicy(QComboBox::NoInsert);
    fieldBox->setMinimumContentsLength(24);
    fieldBox->setMaxVisibleItems(24);
    fieldBox->completer()->setCompletionMode(QCompleter::PopupCompletion);
    fieldBox->completer()->setFilterMode(Qt::MatchContains);
    fieldBox->completer()->setCaseSensitivity(Qt::CaseInsensitive);
    for (QComboBox* box : {keyBox, issueBox}) {
        box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        connect(box, &QComboBox::activated, this, &FieldBoxes::changed);
    }
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(labelFor(tr("&Field"), fieldBox));
    layout->addWidget(fieldBox, 1);
    layout->addWidget(labelFor(tr("A &line for each"), keyBox));
    layout->addWidget(keyBox);
    layout->addWidget(labelFor(tr("&Broken where this changes"), issueBox));
    layout->addWidget(issueBox);
    connect(fieldBox, &QComboBox::activated, this, [this] {
        listKeys();
        Q_EMIT changed();
    });
}

void FieldBoxes::setTypes(const std::set<std::uint16_t>& types)
{
    if (types.size() == typeCount) {
        return;
    }
    typeCount = types.size();
    const std::string before = field() != nullptr ? field()->name : std::string();
    const QString keyBefore = keyBox->currentData().toString();
    const QString issueBefore = issueBox->currentData().toString();
    fields.emplace(format, types);
    listFields();
    const bool isNew = before.empty() || fields->named(before) == nullptr;
    if (isNew && fields->first() == nullptr) {
        return;
    }
    choose(isNew ? fields->first()->name : before);
    if (!isNew) {
        keyBox->setCurrentIndex(std::max(0, keyBox->findData(keyBefore)));
        issueBox->setCurrentIndex(std::max(0, issueBox->findData(issueBefore)));
        Q_EMIT changed();
    }
}

bool FieldBoxes::choose(const std::string& name)
{
    const int place = fieldBox->findData(QString::fromStdString(name));
    if (place < 0) {
        return false;
    }
    fieldBox->setCurrentIndex(place);
    listKeys();
    Q_EMIT changed();
    return true;
}

void FieldBoxes::listFields()
{
    fieldBox->clear();
    for (const PlotField& field : fields->all()) {
        if (isPlottable(field)) {
            fieldBox->addItem(titleOf(field), QString::fromStdString(field.name));
            fieldBox->setItemData(fieldBox->count() - 1,
                                  tr("in %1").arg(QString::fromStdString(field.kinds)),
                                  Qt::ToolTipRole);
        }
    }
}

void FieldBoxes::listKeys()
{
    const PlotField* const chosen = field();
    offer(*keyBox, chosen != nullptr ? fields->satelliteOf(*chosen) : nullptr, tr("Station"));
    offer(*issueBox, chosen != nullptr ? fields->issueOf(*chosen) : nullptr, tr("Nothing"));
}

void FieldBoxes::offer(QComboBox& box, const PlotField* suggested, const QString& none)
{
    box.clear();
    box.addItem(none);
    if (field() == nullptr) {
        return;
    }
    for (const PlotField* key : fields->keysFor(*field())) {
        box.addItem(QString::fromStdString(key->field().name), QString::fromStdString(key->name));
        if (key == suggested) {
            box.setCurrentIndex(box.count() - 1);
        }
    }
}

const PlotField* FieldBoxes::field() const
{
    return chosenIn(*fieldBox);
}

const PlotField* FieldBoxes::chosenIn(const QComboBox& box) const
{
    return fields ? fields->named(box.currentData().toString().toStdString()) : nullptr;
}

// Compiled here instead of on its own.
#include "moc_FieldBoxes.cpp"
