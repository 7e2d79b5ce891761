#include "FieldInfo.h"
#include "Message.h"
#include "MessageInfo.h"
#include "RTCM2Decoder.h"

#include <cstdio>

static void print(const Message* message)
{
    for (const FieldInfo* field : message->getMessageInfo()->getFieldInfos()) {
        for (unsigned i = 0; i < field->getCount(message); ++i) {
            std::printf("%s: %s\n", qPrintable(field->getName()),
                        qPrintable(field->getInterpretedString(message, i, true)));
        }
    }
}

int main()
{
    RTCM2Decoder decoder(nullptr);
    QObject::connect(&decoder, &MessageSource::newMessage, print);
    QObject::connect(&decoder, &MessageSource::newEvent,
                     [](const VorloEvent& event) { std::puts(qPrintable(event.getText())); });
    const unsigned char packed[] = {0x66, 0x04, 0x05, 0x8C, 0xA3, 0x10,
                                    0x2C, 0xFF, 0x9C, 0x05, 0x2A, 0x00};
    return decoder.decodeMessage(packed, sizeof packed) < 0;
}
