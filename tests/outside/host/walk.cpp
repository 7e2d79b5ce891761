// Decodes messages given as hexadecimal lines and reads every value of every field through the
// descriptors; and checks that types and exceptions of the plug-in are known out here.
#include "FieldInfo.h"
#include "Message.h"
#include "MessageInfo.h"
#include "RTCM2Decoder.h"
#include "RTCM2_Message_Type_1_MessageInfo.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

unsigned messages = 0;
unsigned values = 0;
unsigned casts = 0;
unsigned refusals = 0;

void walk(const Message* message)
{
    for (const FieldInfo* field : message->getMessageInfo()->getFieldInfos()) {
        const unsigned count = field->getCount(message);
        for (unsigned i = 0; i < count; ++i, ++values) {
            const FieldValue value = field->getValue(message, i);
            if (value.toSubMessage() != nullptr) {
                walk(value.toSubMessage());
            } else if (field->getInterpretedString(message, i, true).isNull()) {
                std::printf("%s has no text\n", qPrintable(field->getName()));
            }
        }
        try {
            field->getValue(message, count);
        } catch (const VorloEvent& event) {
            refusals += event.getType() == VorloEvent::AccessorMisuse;
        }
    }
}

void receive(const Message* message)
{
    ++messages;
    walk(message);
    const MessageInfo* info = message->getMessageInfo();
    const auto* object = dynamic_cast<const RTCM2_Message_Type_1_Message*>(message);
    const auto* descriptor = dynamic_cast<const RTCM2_Message_Type_1_MessageInfo*>(info);
    const FieldInfo* last = info->getFieldInfos().last();
    const auto* field = dynamic_cast<const RTCM2_Message_Type_1_Corrections_FieldInfo*>(last);
    if (object != nullptr && descriptor == RTCM2_Message_Type_1_MessageInfo::getInstance() &&
        field == RTCM2_Message_Type_1_Corrections_FieldInfo::getInstance() &&
        object->getNumberOfCorrections() == field->getCount(message)) {
        ++casts;
    } else if (object != nullptr || descriptor != nullptr || field != nullptr) {
        std::printf("casts disagree about a message of kind %s\n", qPrintable(info->getName()));
    }
}

}    // namespace

int main(int argc, char** argv)
{
    std::ifstream lines(argc > 1 ? argv[1] : "");
    RTCM2Decoder decoder(nullptr);
    AbstractDecoder& base = decoder;
    if (qobject_cast<RTCM2Decoder*>(static_cast<QObject*>(&base)) != &decoder) {
        return EXIT_FAILURE;
    }
    QObject::connect(&base, &MessageSource::newMessage, receive);
    for (std::string line; std::getline(lines, line);) {
        const QByteArray packed = QByteArray::fromHex(QByteArray::fromStdString(line));
        const auto* bytes = reinterpret_cast<const unsigned char*>(packed.constData());
        if (base.decodeMessage(bytes, static_cast<unsigned>(packed.size())) <= 0) {
            return EXIT_FAILURE;
        }
    }
    std::printf("%u messages, %u values, %u casts, %u refusals\n", messages, values, casts,
                refusals);
    return EXIT_SUCCESS;
}
