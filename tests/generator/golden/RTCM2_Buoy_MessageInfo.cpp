// Rendered by generator/render.py from schema/harbours.yaml through MessageInfo.cpp.j2. Do not edit.
#include "RTCM2_Buoy_MessageInfo.h"

#include "RTCM2_FormatInfo.h"

static UnitTrace traceOf_RTCM2_Buoy_MessageInfo{"Vorlo_RTCM2", "RTCM2_Buoy_MessageInfo", "src/generated/RTCM2_Buoy_MessageInfo.cpp"};

template <>
const MessageInfo* descriptorOf<RTCM2_Buoy_Message>()
{
    return RTCM2_Buoy_MessageInfo::getInstance();
}

const RTCM2_Buoy_MessageInfo* RTCM2_Buoy_MessageInfo::getInstance()
{
    return Singleton<RTCM2_Buoy_MessageInfo>::instance();
}

RTCM2_Buoy_MessageInfo::RTCM2_Buoy_MessageInfo()
    : MessageInfo(QStringLiteral("Buoy"))
{
    traceOf_RTCM2_Buoy_MessageInfo.pass();
    MemLeakTracer::allocateObject(QStringLiteral("RTCM2_Buoy_MessageInfo"));
    setIsMain(false);
    setFormatInfo(RTCM2_FormatInfo::getInstance());
    setupFields();
}

RTCM2_Buoy_MessageInfo::~RTCM2_Buoy_MessageInfo()
{
    traceOf_RTCM2_Buoy_MessageInfo.pass();
    MemLeakTracer::deallocateObject(QStringLiteral("RTCM2_Buoy_MessageInfo"));
}

void RTCM2_Buoy_MessageInfo::setupFields()
{
    addFieldInfo(RTCM2_Buoy_Look_FieldInfo::getInstance_nonconst(), 0, false);
    addFieldInfo(RTCM2_Buoy_Colour_FieldInfo::getInstance_nonconst(), 1, false);
    addFieldInfo(RTCM2_Buoy_Height_FieldInfo::getInstance_nonconst(), 2, false);
    addFieldInfo(RTCM2_Buoy_Chart_FieldInfo::getInstance_nonconst(), 3, false);
}

// Look: 7 bits

const RTCM2_Buoy_Look_FieldInfo* RTCM2_Buoy_Look_FieldInfo::getInstance()
{
    traceOf_RTCM2_Buoy_MessageInfo.pass();
    return getInstance_nonconst();
}

RTCM2_Buoy_Look_FieldInfo* RTCM2_Buoy_Look_FieldInfo::getInstance_nonconst()
{
    return Singleton<RTCM2_Buoy_Look_FieldInfo>::instance();
}

RTCM2_Buoy_Look_FieldInfo::RTCM2_Buoy_Look_FieldInfo()
    : FieldDescriptor(traceOf_RTCM2_Buoy_MessageInfo, "RTCM2_Buoy_Look_FieldInfo", "Look")
{
    addSubFieldInfo(RTCM2_Buoy_Colour_FieldInfo::getInstance_nonconst());
    describe({.texts = {{0, "Dark \"D\""}, {1, "Red"}}});
}

RTCM2_Buoy_Look_FieldInfo::~RTCM2_Buoy_Look_FieldInfo()
{
    traceOf_RTCM2_Buoy_MessageInfo.pass();
    MemLeakTracer::deallocateObject(QStringLiteral("RTCM2_Buoy_Look_FieldInfo"));
}

// Colour: part of Look

const RTCM2_Buoy_Colour_FieldInfo* RTCM2_Buoy_Colour_FieldInfo::getInstance()
{
    traceOf_RTCM2_Buoy_MessageInfo.pass();
    return getInstance_nonconst();
}

RTCM2_Buoy_Colour_FieldInfo* RTCM2_Buoy_Colour_FieldInfo::getInstance_nonconst()
{
    return Singleton<RTCM2_Buoy_Colour_FieldInfo>::instance();
}

RTCM2_Buoy_Colour_FieldInfo::RTCM2_Buoy_Colour_FieldInfo()
    : FieldDescriptor(traceOf_RTCM2_Buoy_MessageInfo, "RTCM2_Buoy_Colour_FieldInfo", "Colour")
{
    describe({});
}

RTCM2_Buoy_Colour_FieldInfo::~RTCM2_Buoy_Colour_FieldInfo()
{
    traceOf_RTCM2_Buoy_MessageInfo.pass();
    MemLeakTracer::deallocateObject(QStringLiteral("RTCM2_Buoy_Colour_FieldInfo"));
}

// Height: 9 bits

const RTCM2_Buoy_Height_FieldInfo* RTCM2_Buoy_Height_FieldInfo::getInstance()
{
    traceOf_RTCM2_Buoy_MessageInfo.pass();
    return getInstance_nonconst();
}

RTCM2_Buoy_Height_FieldInfo* RTCM2_Buoy_Height_FieldInfo::getInstance_nonconst()
{
    return Singleton<RTCM2_Buoy_Height_FieldInfo>::instance();
}

RTCM2_Buoy_Height_FieldInfo::RTCM2_Buoy_Height_FieldInfo()
    : FieldDescriptor(traceOf_RTCM2_Buoy_MessageInfo, "RTCM2_Buoy_Height_FieldInfo", "Height")
{
    describe({.unit = "metre", .texts = {{-256, "Unknown"}}, .doNotUse = -256});
}

RTCM2_Buoy_Height_FieldInfo::~RTCM2_Buoy_Height_FieldInfo()
{
    traceOf_RTCM2_Buoy_MessageInfo.pass();
    MemLeakTracer::deallocateObject(QStringLiteral("RTCM2_Buoy_Height_FieldInfo"));
}

// Chart: not on the wire

const RTCM2_Buoy_Chart_FieldInfo* RTCM2_Buoy_Chart_FieldInfo::getInstance()
{
    traceOf_RTCM2_Buoy_MessageInfo.pass();
    return getInstance_nonconst();
}

RTCM2_Buoy_Chart_FieldInfo* RTCM2_Buoy_Chart_FieldInfo::getInstance_nonconst()
{
    return Singleton<RTCM2_Buoy_Chart_FieldInfo>::instance();
}

RTCM2_Buoy_Chart_FieldInfo::RTCM2_Buoy_Chart_FieldInfo()
    : FieldDescriptor(traceOf_RTCM2_Buoy_MessageInfo, "RTCM2_Buoy_Chart_FieldInfo", "Chart")
{
    describe({.isVirtual = true});
}

RTCM2_Buoy_Chart_FieldInfo::~RTCM2_Buoy_Chart_FieldInfo()
{
    traceOf_RTCM2_Buoy_MessageInfo.pass();
    MemLeakTracer::deallocateObject(QStringLiteral("RTCM2_Buoy_Chart_FieldInfo"));
}
