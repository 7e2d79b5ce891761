#include "QLX_DiffCorrIn_RTCM2Extractor.h"

#include "MemLeakTracer.h"
#include "UnitTrace.h"

#include <QtEndian>

namespace {

UnitTrace extractorTrace{"vorlortcm2", "QLX_DiffCorrIn_RTCM2Extractor",
                         "plugin/QLX_DiffCorrIn_RTCM2Extractor.cpp"};

constexpr int unitSize = 4;
constexpr int wordSize = 3;
constexpr unsigned parityBits = 6;

constexpr unsigned char relabellingMode = 3;
constexpr unsigned typeShift = 16;
constexpr quint32 typeMask = 0x3FU << typeShift;
constexpr unsigned stationShift = 6;
constexpr quint32 stationMask = 0x3FFU << stationShift;
constexpr quint32 relabelledType = 1;
constexpr quint32 wideAreaType = 44;
constexpr quint32 firstWideAreaStation = 64;
constexpr quint32 lastWideAreaStation = 73;

}    // namespace

QLX_DiffCorrIn_RTCM2Extractor::QLX_DiffCorrIn_RTCM2Extractor(MessageSource* source,
                                                             AbstractDecoder* target,
                                                             QObject* parent, unsigned char value)
    : QLX_DiffCorrIn_Extractor(source, target, value, parent)
{
    extractorTrace.pass();
    MemLeakTracer::allocateObject(QStringLiteral("QLX_DiffCorrIn_RTCM2Extractor"));
}

QLX_DiffCorrIn_RTCM2Extractor::~QLX_DiffCorrIn_RTCM2Extractor()
{
    extractorTrace.pass();
    MemLeakTracer::deallocateObject(QStringLiteral("QLX_DiffCorrIn_RTCM2Extractor"));
}

void QLX_DiffCorrIn_RTCM2Extractor::preprocessRawData()
{
    relabel();
    pack();
}

void QLX_DiffCorrIn_RTCM2Extractor::relabel()
{
    if (mode != relabellingMode || rawData.size() < unitSize) {
        return;
    }
    const quint32 unit = qFromLittleEndian<quint32>(rawData.constData());
    const quint32 type = (unit & typeMask) >> typeShift;
    const quint32 station = (unit & stationMask) >> stationShift;
    if (type == relabelledType && station >= firstWideAreaStation &&
        station <= lastWideAreaStation) {
        qToLittleEndian((unit & ~typeMask) | wideAreaType << typeShift, rawData.data());
    }
}

// In place: a word never reaches beyond the unit that it comes from.
void QLX_DiffCorrIn_RTCM2Extractor::pack()
{
    const qsizetype units = rawData.size() / unitSize;
    char* bytes = rawData.data();
    for (qsizetype k = 0; k < units; ++k) {
        const quint32 word = qFromLittleEndian<quint32>(bytes + unitSize * k) >> parityBits;
        bytes[wordSize * k] = static_cast<char>(word >> 16 & 0xFF);
        bytes[wordSize * k + 1] = static_cast<char>(word >> 8 & 0xFF);
        bytes[wordSize * k + 2] = static_cast<char>(word & 0xFF);
    }
    rawData.resize(static_cast<decltype(rawData.size())>(wordSize * units));
}
