// The bits of a message: packed, and as they came by air.
#pragma once

#include "viewer/panes/BitsView.h"
#include "viewer/panes/MessagePane.h"

class QLabel;
class QSplitter;

class BitsPane : public MessagePane {
    Q_OBJECT

public:
    explicit BitsPane(QWidget* parent = nullptr);

    void show(const MessageDetail* shown) override;

    // Lights up the bits of a field.
    void selectField(const FieldPlace& place) override { selection.setField(place); }

    const BitSelection& bits() const { return selection; }

Q_SIGNALS:
    // The person chose bits, and so this field; none for bits of no field.
    void fieldSelected(const FieldPlace& place);
    // Bits of the packed message; none for parity.
    void bitsSelected(const BitRange& range);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    // A view under its title.
    struct Part {
        BitsView* view;
        QLabel* title;
        QWidget* whole;
    };

    Part makePart();
    static void fill(const Part& part, const QString& title, const BitTable& table);
    void arrange();
    void describe();

    BitSelection selection;
    QSplitter* splitter;
    Part packed;
    Part air;
    QLabel* status;
};
