// Writes the raw text line of a message: the selected fields in order, joined by the host's
// separator. Fields are announced in the order of their indices.
#pragma once

#include "Message.h"

#include <QString>
#include <QVector>

class RawLine {
public:
    explicit RawLine(const QVector<bool>& selectedFields) : selection(selectedFields) {}

    // Each call announces the next field. Optional fields are announced with `present`; an absent
    // one leaves its slot empty.
    void byte(unsigned value, bool present = true);
    template <class Integer>
    void number(Integer value, bool present = true);
    // A number with one value that means that there is none.
    template <class Integer>
    void numberUnless(Integer doNotUse, Integer value);
    void real(double value);
    // Up to the first NUL, at most `count` characters.
    void text(const char* characters, unsigned count, unsigned capacity, bool present = true);
    // Two digits each, in groups of four.
    void bytes(const unsigned char* values, unsigned count, unsigned capacity);
    void subMessages(unsigned count);

    QString take() { return std::move(line); }

private:
    // Whether the next field is selected; if so, the separator before it has been written.
    bool begin();
    void appendHex(unsigned value);

    const QVector<bool>& selection;
    QString line;
    int field = 0;
    bool somethingWritten = false;
};

template <class Integer>
void RawLine::number(Integer value, bool present)
{
    if (begin() && present) {
        line += QString::number(value);
    }
}

template <class Integer>
void RawLine::numberUnless(Integer doNotUse, Integer value)
{
    if (!begin()) {
        return;
    }
    if (value == doNotUse && Message::useDoNotUseString) {
        line += Message::doNotUseString;
    } else {
        line += QString::number(value);
    }
}
