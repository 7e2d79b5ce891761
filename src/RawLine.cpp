#include "RawLine.h"

#include "FloatRepresentation.h"
#include "ValueText.h"

#include <algorithm>

bool RawLine::begin()
{
    const int index = field++;
    if (index >= selection.size() || !selection[index]) {
        return false;
    }
    if (somethingWritten) {
        line += Message::fieldSeparator;
    }
    somethingWritten = true;
    return true;
}

void RawLine::byte(unsigned value, bool present)
{
    if (begin() && present) {
        line += ValueText::hex(value);
    }
}

void RawLine::real(double value)
{
    if (begin()) {
        line += FloatRepresentation::getString(value, 'f', 6, false);
    }
}

void RawLine::text(const char* characters, unsigned count, unsigned capacity, bool present)
{
    if (begin() && present) {
        line += ValueText::text(characters, std::min(count, capacity));
    }
}

void RawLine::bytes(const unsigned char* values, unsigned count, unsigned capacity)
{
    if (!begin()) {
        return;
    }
    for (unsigned i = 0; i < std::min(count, capacity); ++i) {
        if (i > 0 && i % 4 == 0) {
            line += QLatin1Char(' ');
        }
        line += ValueText::hex(values[i]);
    }
}

void RawLine::subMessages(unsigned count)
{
    if (!begin()) {
        return;
    }
    for (unsigned i = 0; i < count; ++i) {
        line += i == 0 ? QLatin1String("submsg") : QLatin1String(" submsg");
    }
}
