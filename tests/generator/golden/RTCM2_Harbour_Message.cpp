// Rendered by generator/render.py from schema/harbours.yaml through Message.cpp.j2. Do not edit.
#include "RTCM2_Harbour_Message.h"

#include "RawLine.h"
#include "UnitTrace.h"

static UnitTrace traceOf_RTCM2_Harbour_Message{"Vorlo_RTCM2", "RTCM2_Harbour_Message", "src/generated/RTCM2_Harbour_Message.cpp"};

RTCM2_Harbour_Message::RTCM2_Harbour_Message(RTCM2_Harbour_s* record, bool owns)
    : MessageWithSubMessages(descriptorOf<RTCM2_Harbour_Message>(), record, owns)
{
    traceOf_RTCM2_Harbour_Message.pass();
}

RTCM2_Harbour_Message::RTCM2_Harbour_Message(const RTCM2_Harbour_s& decoded)
    : MessageWithSubMessages(descriptorOf<RTCM2_Harbour_Message>(), decoded)
{
    traceOf_RTCM2_Harbour_Message.pass();
}

RTCM2_Harbour_Message::~RTCM2_Harbour_Message()
{
    traceOf_RTCM2_Harbour_Message.pass();
    reportDestruction();
}

QString RTCM2_Harbour_Message::getRawStringFor(const QVector<bool>& selection) const
{
    const RTCM2_Harbour_s& r = record();
    RawLine line(selection);
    line.byte(r.Preamble);
    line.number(r.Message_Type);
    line.number(r.Station_);
    line.byte(r.Pilot);
    line.real(r.Reach);
    line.number(r.Channel, hasChannel());
    line.number(r.Length);
    line.text(r.Title, getNumberOfTitle(), 32, hasTitle());
    line.bytes(r.Note, getNumberOfNote(), 9);
    line.number(r.Nb);
    line.subMessages(count());
    return line.take();
}
