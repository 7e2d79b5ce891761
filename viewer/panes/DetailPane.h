// One message: its fields and its bits, each of which finds what is chosen in the other.
#pragma once

#include "viewer/panes/BitsPane.h"
#include "viewer/panes/FieldsPane.h"

class DetailPane : public MessagePane {
    Q_OBJECT

public:
    explicit DetailPane(QWidget* parent = nullptr);

    void show(const MessageDetail* shown) override;
    void selectField(const FieldPlace& place) override;

    FieldsPane& fields() { return *fieldsPane; }
    BitsPane& bits() { return *bitsPane; }

private:
    FieldsPane* fieldsPane;
    BitsPane* bitsPane;
    QSplitter* splitter;
};
