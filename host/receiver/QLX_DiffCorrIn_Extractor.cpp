#include "QLX_DiffCorrIn_Extractor.h"

#include "AbstractDecoder.h"
#include "QLX_DiffCorrIn_Message.h"

QLX_DiffCorrIn_Extractor::QLX_DiffCorrIn_Extractor(MessageSource* source,
                                                   AbstractDecoder* blockDecoder,
                                                   unsigned char value, QObject* parent)
    : QObject(parent), mode(value), decoder(blockDecoder), defaultMode(value)
{
    if (source) {
        connect(source, &MessageSource::newMessage, this, &QLX_DiffCorrIn_Extractor::extract,
                Qt::DirectConnection);
    }
}

QLX_DiffCorrIn_Extractor::~QLX_DiffCorrIn_Extractor() = default;

void QLX_DiffCorrIn_Extractor::preprocessRawData() {}

void QLX_DiffCorrIn_Extractor::extract(const Message* message)
{
    const auto* block = dynamic_cast<const QLX_DiffCorrIn_Message*>(message);
    if (!block) {
        return;
    }
    rawData = block->getPayload();
    mode = block->getMode().value_or(defaultMode);
    preprocessRawData();
    if (rawData.isEmpty() || !decoder) {
        return;
    }
    // Somebody who listens to the decoder may bring the next block before this one is finished: the
    // decoder's buffer must outlive that.
    const QByteArray packed = rawData;
    decoder->decodeMessage(reinterpret_cast<const unsigned char*>(packed.constData()),
                           static_cast<unsigned int>(packed.size()));
}

// Compiled here instead of on its own.
#include "moc_QLX_DiffCorrIn_Extractor.cpp"
