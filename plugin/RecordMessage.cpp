#include "RecordMessage.h"

#include "Misuse.h"
#include "record_values.h"

void RecordMessage::failWithoutRecord() const
{
    qFatal("RTCM2_%s_Message::assertRepresentation() failed when trying to access data of an "
           "uninitialized message.",
           kindRow().name);
}

const Message* RecordMessage::subMessage(const RTCM2_member_s& array, unsigned index) const
{
    assertedRecord();
    demandIndex(array, index);
    if (subMessages == nullptr) {
        makeSubMessages();
    }
    return subMessages->messages[static_cast<int>(index)];
}

QVector<Message*> RecordMessage::getSubMessages()
{
    return subMessages != nullptr ? subMessages->messages : QVector<Message*>();
}

QVector<const Message*> RecordMessage::getSubMessages() const
{
    const QVector<Message*> objects = const_cast<RecordMessage*>(this)->getSubMessages();
    return QVector<const Message*>(objects.cbegin(), objects.cend());
}

bool RecordMessage::has(int index) const
{
    return rtcm2::isPresent(assertedRecord(), member(index));
}

void RecordMessage::demandPresent(const RTCM2_member_s& member) const
{
    if (!rtcm2::isPresent(assertedRecord(), member)) {
        throwMisuse("Requesting value for a non-present optional field.");
    }
}

void RecordMessage::demandIndex(const RTCM2_member_s& member, unsigned index) const
{
    if (index >= numberOf(member)) {
        throwMisuse(
            QStringLiteral("Requesting value for an repeated field %1 with out of range index.")
                .arg(QString::fromUtf8(member.display)));
    }
}

unsigned RecordMessage::numberOf(const RTCM2_member_s& member) const
{
    const unsigned terminator = member.type == RTCM2_TYPE_CHARACTER ? 1 : 0;
    return rtcm2::lengthOf(assertedRecord(), member) + terminator;
}
