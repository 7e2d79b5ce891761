#include "QLX_DiffCorrIn_Message.h"

#include "FieldInfo.h"
#include "QLX_DiffCorrIn_MessageInfo.h"

#include <QStringList>

#include <utility>

QLX_DiffCorrIn_Message::QLX_DiffCorrIn_Message(QByteArray blockPayload,
                                               std::optional<unsigned char> blockMode)
    : Message(QLX_DiffCorrIn_MessageInfo::getInstance()), payload(std::move(blockPayload)),
      mode(blockMode)
{
}

QLX_DiffCorrIn_Message::~QLX_DiffCorrIn_Message() = default;

QString QLX_DiffCorrIn_Message::getRawStringFor(const QVector<bool>& selection) const
{
    const QVector<const FieldInfo*>& fields = getMessageInfo()->getFieldInfos();
    QStringList texts;
    for (int index = 0; index < fields.size(); ++index) {
        if (selection.value(index)) {
            texts.append(fields.at(index)->getValueString(this));
        }
    }
    return texts.join(fieldSeparator);
}

const void* QLX_DiffCorrIn_Message::getRawRepresentation() const
{
    return this;
}
