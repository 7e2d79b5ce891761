// Decodes messages given as hexadecimal lines, and checks that types and exceptions of the plug-in
// are known out here.
#include "FieldInfo.h"
#include "Message.h"
#include "MessageInfo.h"
#include "RTCM2Decoder.h"
#include "RTCM2_Message_Type_1_Message.h"
#include "RTCM2_Message_Type_1_MessageInfo.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

unsigned messages = 0;
unsigned casts = 0;
unsigned refusals = 0;

void receive(const Message* message)
{
    ++messages;
    const MessageInfo* info = message->getMessageInfo();
    const FieldInfo* last = info->getFieldInfos().last();
    const auto* object = dynamic_cast<const RTCM2_Message_Type_1_Message*>(message);
    const auto* descriptor = dynamic_cast<const RTCM2_Message_Type_1_MessageInfo*>(info);
    const auto* field = dynamic_cast<const RTCM2_Message_Type_1_Corrections_FieldInfo*>(last);
    if (object != nullptr && descriptor == RTCM2_Message_Type_1_MessageInfo::getInstance() &&
        field == RTCM2_Message_Type_1_Corrections_FieldInfo::getInstance() &&
        object->getNumberOfCorrections() == field->getCount(message)) {
        ++casts;
    }
    try {
        last->getValue(message, last->getCount(message));
    } catch (const VorloEvent& event) {
        refusals += event.getType() == VorloEvent::AccessorMisuse;
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
        base.decodeMessage(bytes, static_cast<unsigned>(packed.size()));
    }
    std::printf("%u messages, %u casts, %u refusals\n", messages, casts, refusals);
    return EXIT_SUCCESS;
}
