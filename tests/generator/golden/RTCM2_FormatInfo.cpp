// Rendered by generator/render.py from schema through RTCM2_FormatInfo.cpp.j2. Do not edit.
#include "RTCM2_FormatInfo.h"

#include "DescriptorLinks.h"
#include "MemLeakTracer.h"
#include "RTCM2_Buoy_MessageInfo.h"
#include "RTCM2_Harbour_MessageInfo.h"
#include "UnitTrace.h"

static UnitTrace traceOf_RTCM2_FormatInfo{"Vorlo_RTCM2", "RTCM2_FormatInfo", "src/generated/RTCM2_FormatInfo.cpp"};

const FormatInfo* formatDescriptor()
{
    return RTCM2_FormatInfo::getInstance();
}

const RTCM2_FormatInfo* RTCM2_FormatInfo::getInstance()
{
    RTCM2_FormatInfo* format = Singleton<RTCM2_FormatInfo>::instance();
    if (!format->setupDone) {
        format->setupMessageInfos();
    }
    return format;
}

RTCM2_FormatInfo::RTCM2_FormatInfo()
    : FormatInfo(QStringLiteral("RTCM2")), setupDone(false)
{
    traceOf_RTCM2_FormatInfo.pass();
    MemLeakTracer::allocateObject(QStringLiteral("RTCM2_FormatInfo"));
}

RTCM2_FormatInfo::~RTCM2_FormatInfo()
{
    traceOf_RTCM2_FormatInfo.pass();
    MemLeakTracer::deallocateObject(QStringLiteral("RTCM2_FormatInfo"));
}

// The descriptors ask for the registry while they are constructed; for them it is set up already.
void RTCM2_FormatInfo::setupMessageInfos()
{
    setupDone = true;
    addSubMessageInfo(RTCM2_Buoy_MessageInfo::getInstance());
    addMessageInfo(RTCM2_Harbour_MessageInfo::getInstance());
}
