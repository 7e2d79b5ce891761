#include "DescriptorLinks.h"

#include "VorloEvent.h"

void throwMisuse(const char* text)
{
    throw VorloEvent(VorloEvent::AccessorMisuse, QString::fromLatin1(text), formatDescriptor());
}
