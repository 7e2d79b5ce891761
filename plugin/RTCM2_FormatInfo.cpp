#include "RTCM2_FormatInfo.h"

#include "MemLeakTracer.h"
#include "Misuse.h"
#include "PluginKinds.h"
#include "RTCM2_format.h"
#include "UnitTrace.h"

namespace {

UnitTrace formatTrace{"Vorlo_RTCM2", "RTCM2_FormatInfo", "plugin/RTCM2_FormatInfo.cpp"};

}    // namespace

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

RTCM2_FormatInfo::RTCM2_FormatInfo() : FormatInfo(QStringLiteral("RTCM2")), setupDone(false)
{
    formatTrace.pass();
    MemLeakTracer::allocateObject(QStringLiteral("RTCM2_FormatInfo"));
}

RTCM2_FormatInfo::~RTCM2_FormatInfo()
{
    formatTrace.pass();
    MemLeakTracer::deallocateObject(QStringLiteral("RTCM2_FormatInfo"));
}

// The descriptors ask for the registry while they are constructed; for them it is set up already.
void RTCM2_FormatInfo::setupMessageInfos()
{
    setupDone = true;
    for (const RTCM2_message_enum kind : registeredKinds()) {
        const MessageInfo* const info = pluginKinds[kind].descriptor();
        if (RTCM2_kind(kind)->type >= 0) {
            addMessageInfo(info);
        } else {
            addSubMessageInfo(info);
        }
    }
}
