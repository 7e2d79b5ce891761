// One DiffCorrIn block of the receiver.
#pragma once

#include "Message.h"
#include "ReceiverExport.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

// The receiver repeats in these blocks the differential corrections that it took in, word by word
// as it stores them. Which correction format they are in is known to the extractor, not here.
// Fields: Mode (optional), Data.
class HOST_RECEIVER_EXPORT QLX_DiffCorrIn_Message : public Message {
public:
    // Correction payload of the block, possibly empty, and the block's mode byte where it carries
    // one. The meaning of the mode values depends on the correction format.
    explicit QLX_DiffCorrIn_Message(QByteArray payload, std::optional<unsigned char> mode = {});
    ~QLX_DiffCorrIn_Message() override;

    const QByteArray& getPayload() const { return payload; }
    std::optional<unsigned char> getMode() const { return mode; }

    QString getRawStringFor(const QVector<bool>& selection) const override;

private:
    const void* getRawRepresentation() const override;

    QByteArray payload;
    std::optional<unsigned char> mode;
};
