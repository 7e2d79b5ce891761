#include "Misuse.h"

#include "VorloEvent.h"

void throwMisuse(const QString& text)
{
    throw VorloEvent(VorloEvent::AccessorMisuse, text, formatDescriptor());
}

void throwMisuse(const char* text)
{
    throwMisuse(QString::fromLatin1(text));
}
