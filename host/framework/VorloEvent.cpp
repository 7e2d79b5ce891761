#include "VorloEvent.h"

#include <utility>

VorloEvent::VorloEvent() = default;

VorloEvent::VorloEvent(Type eventType, QString eventText, const FormatInfo* eventFormat)
    : type(eventType), text(std::move(eventText)), format(eventFormat)
{
}
