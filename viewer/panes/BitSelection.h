// Which bits of a message are lit up, and why: by a field, by a person who marks bits, or by a
// parity bit, which lights up the bits that it is the sum of.
#pragma once

#include "viewer/panes/BitMap.h"
#include "viewer/panes/BitTable.h"

#include <QObject>

class BitSelection : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Nothing is lit up then. The detail stays until the next call; null for none.
    void setMessage(const MessageDetail* shown, std::vector<AirWord> sentWords);
    const BitMap& map() const { return bitMap; }
    const std::vector<AirWord>& words() const { return airWords; }

    // Lights up the bits of a field, and of its element where it has none of its own.
    void setField(const FieldPlace& place);
    // Goes to a bit, which lights up its field; or marks the bits from where it was to there.
    void moveTo(WordBit bit, bool isMarking);

    bool isLit(WordBit bit) const;
    // The bits that are lit up, where they follow each other in the packed message.
    BitRange range() const { return lit; }
    WordBit cursor() const { return current; }
    FieldPlace field() const { return chosen; }

    // What is lit up, in words for people.
    QString description() const;
    // What a bit is.
    QString about(WordBit bit) const;

    // The bits that are lit up, or the whole message where none are: as zeros and ones, or as a
    // number in hexadecimal digits.
    QString bitText() const;
    QString hexText() const;

Q_SIGNALS:
    void changed();
    // The person chose bits, and so this field; none for bits of no field.
    void fieldFound(const FieldPlace& place);
    void bitsFound(const BitRange& range);

private:
    void chooseFieldOf(WordBit bit);
    void mark();
    bool isSummed(WordBit bit) const;
    QString fieldsIn(const BitRange& range) const;
    QString dataText(std::uint32_t bit) const;
    QString parityText(WordBit bit) const;
    BitRange copied() const;

    const MessageDetail* detail = nullptr;
    BitMap bitMap;
    std::vector<AirWord> airWords;
    FieldPlace chosen;
    WordBit current;
    WordBit anchor;    // from where bits are marked
    BitRange lit;
    WordBit parity;    // the parity bit that is looked at, or none
};
