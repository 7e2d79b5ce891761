// Turns the RTCM 2 words that a receiver stored in its DiffCorrIn blocks into packed messages.
#pragma once

#include "PluginExport.h"
#include "QLX_DiffCorrIn_Extractor.h"

// The payload of a block is one message, one little-endian 32-bit unit a word: bits 0 to 5 are the
// parity, bits 6 to 29 the data, first transmitted bit in bit 29; bits 30 and 31 are ignored.
//
// In mode 3 a type 1 message of the stations 64 to 73 is handed on as type 44.
class VORLO_RTCM2_EXPORT QLX_DiffCorrIn_RTCM2Extractor : public QLX_DiffCorrIn_Extractor {
public:
    // Source and target stay the caller's. `value` is the mode of blocks that carry none.
    QLX_DiffCorrIn_RTCM2Extractor(MessageSource* source, AbstractDecoder* target, QObject* parent,
                                  unsigned char value);
    ~QLX_DiffCorrIn_RTCM2Extractor() override;

protected:
    // Replaces the units in rawData by packed words of three bytes. A partial unit at the end is
    // dropped.
    void preprocessRawData() override;

private:
    VORLO_RTCM2_INTERNAL void relabel();
    VORLO_RTCM2_INTERNAL void pack();
};
