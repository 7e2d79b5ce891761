// Takes differential corrections out of the receiver's data and hands them to a decoder.
#pragma once

#include "MessageSource.h"
#include "ReceiverExport.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>

class AbstractDecoder;
class Message;

// Listens to MessageSource::newMessage of a source. For every DiffCorrIn block the payload goes
// into rawData, a subclass brings it into the form that its decoder reads, and the decoder decodes
// it; nothing is decoded when no data is left. Messages of other kinds are ignored. Everything
// happens within the signal, on the thread of the source; the extractor is made and destroyed there
// too.
class HOST_RECEIVER_EXPORT QLX_DiffCorrIn_Extractor : public QObject {
    Q_OBJECT

public:
    // Source and decoder stay the caller's; either may be null and either may be destroyed first.
    // Without a source nothing is extracted, without a decoder nothing is decoded. The value is the
    // mode of blocks that carry no mode byte of their own.
    QLX_DiffCorrIn_Extractor(MessageSource* source, AbstractDecoder* decoder, unsigned char value,
                             QObject* parent = nullptr);
    ~QLX_DiffCorrIn_Extractor() override;

protected:
    // Brings rawData in place into the form that the decoder reads; mode tells the block's mode.
    // May leave rawData empty to drop the block. The base leaves everything as it is. Called for
    // blocks with an empty payload as well.
    virtual void preprocessRawData();

    QByteArray rawData;    // payload of the block in work
    unsigned char mode;    // mode of the block in work, before the first one the constructor's

private:
    void extract(const Message* message);

    QPointer<AbstractDecoder> decoder;
    unsigned char defaultMode;
};
