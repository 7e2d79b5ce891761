// What a program loads that does not link the plug-in itself.
#include "RTCM2Decoder.h"
#include "support/CompletionOrder.h"

#include "Message.h"

namespace {

// A type 1 message of station 5 with one correction.
constexpr unsigned char packed[] = {0x66, 0x04, 0x05, 0x8C, 0xA3, 0x10,
                                    0x2C, 0xFF, 0x9C, 0x05, 0x2A, 0x00};

// The number of values in the message and its parts that have a text.
int countTexts(const Message& message)
{
    int texts = 0;
    for (const FieldInfo* field : message.getMessageInfo()->getFieldInfos()) {
        for (unsigned i = 0; i < field->getCount(&message); ++i) {
            texts += field->getInterpretedString(&message, i, true).isEmpty() ? 0 : 1;
            if (const Message* part = field->getValue(&message, i).toSubMessage()) {
                texts += countTexts(*part);
            }
        }
    }
    return texts;
}

}    // namespace

// Decodes a message and reads all its texts, of which it returns the number. Tells the order in
// which the singletons were completed, in characters that outlive the module.
extern "C" __attribute__((visibility("default"))) int usePlugin(QStringList& completed)
{
    int texts = 0;
    RTCM2Decoder decoder(nullptr);
    QObject::connect(&decoder, &MessageSource::newMessage,
                     [&](const Message* message) { texts += countTexts(*message); });
    if (decoder.decodeMessage(packed, sizeof packed) < 0) {
        return -1;
    }
    for (const QString& name : completionOrder({QStringLiteral("RTCM2_Type_15_")})) {
        completed << QString(name.constData(), name.size());
    }
    return texts;
}
