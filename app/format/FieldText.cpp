#include "format/FieldText.h"

#include "FieldInfo.h"
#include "Message.h"

std::string rawText(const FieldModel& field, const Message& message)
{
    return field.info->isPresent(&message) ? field.info->getValueString(&message).toStdString()
                                           : std::string();
}

std::string interpretedText(const FieldModel& field, const Message& message, unsigned index,
                            bool withUnit)
{
    return field.info->getInterpretedString(&message, index, withUnit).toStdString();
}

std::string interpretedText(const FieldModel& field, const Message& message, bool withUnit)
{
    const unsigned count = field.info->getCount(&message);
    if (field.element != nullptr) {
        return std::to_string(count) + " x " + field.element->name;
    }
    if (field.isText()) {
        return rawText(field, message);
    }
    std::string text;
    for (unsigned i = 0; i < count; ++i) {
        text += (i == 0 ? "" : " ") + interpretedText(field, message, i, withUnit);
    }
    return text;
}
