#include "viewer/panes/DetailPane.h"

#include <QSplitter>
#include <QVBoxLayout>

DetailPane::DetailPane(QWidget* parent)
    : MessagePane(parent), fieldsPane(new FieldsPane), bitsPane(new BitsPane),
      splitter(new QSplitter)
{
    splitter->addWidget(fieldsPane);
    splitter->addWidget(bitsPane);
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 9);
    splitter->setStretchFactor(1, 11);
    splitter->setSizes({900, 1100});    // shares of what there is
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    connect(fieldsPane, &FieldsPane::fieldSelected, bitsPane, &BitsPane::selectField);
    connect(bitsPane, &BitsPane::fieldSelected, fieldsPane, &FieldsPane::selectField);
}

// What stays chosen from the message before is chosen among the bits, too.
void DetailPane::show(const MessageDetail* shown)
{
    fieldsPane->show(shown);
    bitsPane->show(shown);
    bitsPane->selectField(fieldsPane->selectedField());
}

void DetailPane::selectField(const FieldPlace& place)
{
    fieldsPane->selectField(place);
    bitsPane->selectField(place);
}

// Compiled here instead of on its own.
#include "moc_DetailPane.cpp"
