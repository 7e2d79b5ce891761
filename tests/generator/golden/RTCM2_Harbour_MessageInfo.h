// Rendered by generator/render.py from schema/harbours.yaml through MessageInfo.h.j2. Do not edit.
#pragma once

#include "FieldDescriptor.h"
#include "MessageInfo.h"
#include "PluginExport.h"
#include "RTCM2_Harbour_Message.h"
#include "Singleton.h"

// Describes messages of type 5.
class VORLO_RTCM2_EXPORT RTCM2_Harbour_MessageInfo final : public MessageInfo {
public:
    static const RTCM2_Harbour_MessageInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_MessageInfo>;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_MessageInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_MessageInfo() override;

    VORLO_RTCM2_INTERNAL void setupFields();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Preamble_FieldInfo final
    : public FieldDescriptor<PlainAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::getPreamble>, ByteType, false> {
public:
    static const RTCM2_Harbour_Preamble_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Preamble_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Preamble_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Preamble_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Preamble_FieldInfo* getInstance_nonconst();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Message_Type_FieldInfo final
    : public FieldDescriptor<PlainAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::getMessage_Type>, UnsignedType<6>, false> {
public:
    static const RTCM2_Harbour_Message_Type_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Message_Type_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Message_Type_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Message_Type_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Message_Type_FieldInfo* getInstance_nonconst();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Station_FieldInfo final
    : public FieldDescriptor<PlainAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::getStation_>, UnsignedType<34>, false> {
public:
    static const RTCM2_Harbour_Station_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Station_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Station_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Station_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Station_FieldInfo* getInstance_nonconst();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Pilot_FieldInfo final
    : public FieldDescriptor<PlainAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::getPilot>, ByteType, false> {
public:
    static const RTCM2_Harbour_Pilot_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Pilot_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Pilot_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Pilot_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Pilot_FieldInfo* getInstance_nonconst();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Reach_FieldInfo final
    : public FieldDescriptor<PlainAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::getReach>, Float64Type, false> {
public:
    static const RTCM2_Harbour_Reach_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Reach_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Reach_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Reach_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Reach_FieldInfo* getInstance_nonconst();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Channel_FieldInfo final
    : public FieldDescriptor<OptionalAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::hasChannel, &RTCM2_Harbour_Message::getChannel>, UnsignedType<8>, false> {
public:
    static const RTCM2_Harbour_Channel_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Channel_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Channel_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Channel_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Channel_FieldInfo* getInstance_nonconst();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Length_FieldInfo final
    : public FieldDescriptor<PlainAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::getLength>, UnsignedType<5>, false> {
public:
    static const RTCM2_Harbour_Length_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Length_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Length_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Length_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Length_FieldInfo* getInstance_nonconst();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Title_FieldInfo final
    : public TextFieldDescriptor<OptionalRepeatedAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::hasTitle, &RTCM2_Harbour_Message::getNumberOfTitle, &RTCM2_Harbour_Message::getTitle>, &RTCM2_Harbour_Message::getNumberOfTitle, constAccessor(&RTCM2_Harbour_Message::getTitleArray), 32> {
public:
    static const RTCM2_Harbour_Title_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Title_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Title_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Title_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Title_FieldInfo* getInstance_nonconst();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Note_FieldInfo final
    : public FieldDescriptor<RepeatedAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::getNumberOfNote, &RTCM2_Harbour_Message::getNote>, ByteType, false> {
public:
    static const RTCM2_Harbour_Note_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Note_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Note_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Note_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Note_FieldInfo* getInstance_nonconst();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Nb_FieldInfo final
    : public FieldDescriptor<PlainAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::getNb>, UnsignedType<16>, false> {
public:
    static const RTCM2_Harbour_Nb_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Nb_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Nb_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Nb_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Nb_FieldInfo* getInstance_nonconst();
};

class VORLO_RTCM2_EXPORT RTCM2_Harbour_Buoys_FieldInfo final
    : public FieldDescriptor<RepeatedAccess<RTCM2_Harbour_Message, &RTCM2_Harbour_Message::getNumberOfBuoys, constAccessor(&RTCM2_Harbour_Message::getBuoys)>, SubMessageType<RTCM2_Buoy_Message>, false> {
public:
    static const RTCM2_Harbour_Buoys_FieldInfo* getInstance();

private:
    friend class Singleton<RTCM2_Harbour_Buoys_FieldInfo>;
    friend class RTCM2_Harbour_MessageInfo;

    VORLO_RTCM2_INTERNAL RTCM2_Harbour_Buoys_FieldInfo();
    VORLO_RTCM2_INTERNAL ~RTCM2_Harbour_Buoys_FieldInfo() override;

    VORLO_RTCM2_INTERNAL static RTCM2_Harbour_Buoys_FieldInfo* getInstance_nonconst();
};
