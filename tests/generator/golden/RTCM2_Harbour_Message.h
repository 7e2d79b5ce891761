// Rendered by generator/render.py from schema/harbours.yaml through Message.h.j2. Do not edit.
#pragma once

#include "MessageWithSubMessages.h"
#include "PluginExport.h"
#include "RTCM2.h"
#include "RTCM2_Buoy_Message.h"

class RTCM2_Harbour_Message;

template <>
VORLO_RTCM2_INTERNAL const MessageInfo* descriptorOf<RTCM2_Harbour_Message>();

struct RTCM2_Harbour_Traits {
    using Record = RTCM2_Harbour_s;
    static QString className() { return QStringLiteral("RTCM2_Harbour_Message"); }
    static constexpr bool isMain = true;
    static void freeChildren(Record* record) { RTCM2_free_Harbour_children(record); }
    using Element = RTCM2_Buoy_Message;
    static auto array(const Record& record) { return record.Buoys; }
    static unsigned count(const Record& record) { return record.Nb; }
};

// Type 5: Harbour and its buoys.
class VORLO_RTCM2_EXPORT RTCM2_Harbour_Message final : public MessageWithSubMessages<RTCM2_Harbour_Traits> {
public:
    // Refers to a record, or takes it over with its arrays if it came from new.
    RTCM2_Harbour_Message(RTCM2_Harbour_s* record, bool ownsRepresentation);
    // Holds a copy of a decoded record and takes over its arrays.
    explicit RTCM2_Harbour_Message(const RTCM2_Harbour_s& decoded);
    ~RTCM2_Harbour_Message() override;

    uint8_t getPreamble() const { return record().Preamble; }
    uint8_t getMessage_Type() const { return record().Message_Type; }
    uint64_t getStation_() const { return record().Station_; }
    uint8_t getPilot() const { return record().Pilot; }
    double getReach() const { return record().Reach; }
    bool hasChannel() const { const auto& r = record(); return r.Pilot == 1 || r.Pilot == 2; }
    uint8_t getChannel() const { return presentValue(hasChannel(), record().Channel); }
    uint8_t getLength() const { return record().Length; }
    bool hasTitle() const { const auto& r = record(); return r.Pilot == 1 || r.Pilot == 2; }
    unsigned int getNumberOfTitle() const { return record().Length + 1U; }
    char getTitle(unsigned int index) const
    {
        return checkedElement(record().Title, getNumberOfTitle(), index, "Requesting value for an repeated field Title with out of range index.");
    }
    QVector<char> getTitleVector() const { return elementVector(record().Title, getNumberOfTitle()); }
    const char* getTitleArray() const { return representation->Title; }
    char* getTitleArray() { return representation->Title; }
    unsigned int getNumberOfNote() const { return record().Length; }
    uint8_t getNote(unsigned int index) const
    {
        return checkedElement(record().Note, getNumberOfNote(), index, "Requesting value for an repeated field Note with out of range index.");
    }
    QVector<uint8_t> getNoteVector() const { return elementVector(record().Note, getNumberOfNote()); }
    const uint8_t* getNoteArray() const { return representation->Note; }
    uint8_t* getNoteArray() { return representation->Note; }
    uint16_t getNb() const { return record().Nb; }
    unsigned int getNumberOfBuoys() const { return count(); }
    const RTCM2_Buoy_Message* getBuoys(unsigned int index) const { return subMessage(index, "Requesting value for an repeated field Buoys with out of range index."); }
    RTCM2_Buoy_Message* getBuoys(unsigned int index) { return subMessage(index, "Requesting value for an repeated field Buoys with out of range index."); }
    QVector<const RTCM2_Buoy_Message*> getBuoysVector() const { return allConstSubMessages(); }
    QVector<RTCM2_Buoy_Message*> getBuoysVector() { return allSubMessages(); }

    QString getRawStringFor(const QVector<bool>& selection) const override;
};
