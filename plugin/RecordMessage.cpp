#include "RecordMessage.h"

#include "MemLeakTracer.h"
#include "MessageInfo.h"
#include "Misuse.h"
#include "PluginKinds.h"
#include "RawLine.h"
#include "record_values.h"

#include <cstdlib>
#include <new>

namespace {

const PluginKind& classOf(RTCM2_message_enum kind)
{
    return pluginKinds()[kind];
}

}    // namespace

RecordMessage::RecordMessage(RTCM2_message_enum kind, void* record, Hold holding)
    : Message(classOf(kind).descriptor()), representation(record), row(*RTCM2_kind(kind)),
      hold(holding)
{
    MemLeakTracer::allocateObject(classOf(kind).messageClassName());
}

void RecordMessage::dispose()
{
    MemLeakTracer::deallocateObject(classOf(row.kind).messageClassName());
    subMessages.reset();
    if (!hasRecord() || hold == Hold::reference) {
        return;
    }
    if (row.array != nullptr) {
        std::free(rtcm2::elementsOf(representation, *row.array));
    }
    if (hold == Hold::own) {
        ::operator delete(representation, row.size);
    }
}

void RecordMessage::failWithoutRecord() const
{
    qFatal("%s::assertRepresentation() failed when trying to access data of an uninitialized "
           "message.",
           qPrintable(classOf(row.kind).messageClassName()));
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

QString RecordMessage::getRawStringFor(const QVector<bool>& selection) const
{
    return rawLineOf(*this, selection);
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
