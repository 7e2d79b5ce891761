// Decodes packed messages, one at a time, and answers through the signals of MessageSource.
#pragma once

#include "AbstractDecoder.h"
#include "PluginExport.h"
#include "RTCM2.h"

#include <cstdint>

// Message objects for the kinds that the host knows, events for what fails. Wide-area messages are
// decoded and reported to nobody. A buffer longer than 65,535 bytes is read up to there.
//
// A decoder is driven from one thread at a time. Exceptions of receivers reach the caller of
// decodeMessage; a message that was being emitted is not leaked.
class VORLO_RTCM2_EXPORT RTCM2Decoder : public AbstractDecoder {
    Q_OBJECT

public:
    explicit RTCM2Decoder(QObject* parent);
    ~RTCM2Decoder() override;

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    static QString trUtf8(const char* text, const char* disambiguation = nullptr, int n = -1)
    {
        return tr(text, disambiguation, n);
    }
#endif

public Q_SLOTS:
    // Returns the number of bits that the message's layout consumed, or the codec's error code.
    int32_t decodeMessage(const uint8_t* buffer, unsigned int maxlength) override;

public:
    // Switch all main kinds.
    void enableAllMessages() override;
    void disableAllMessages() override;

private:
    // Values of no kind change nothing and count as disabled.
    void enableMessageEnum(int value) override;
    void disableMessageEnum(int value) override;
    bool isEnabledMessageEnum(int value) const override;

    RTCM2_context_s context;
};
