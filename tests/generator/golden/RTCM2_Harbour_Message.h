// Rendered by generator/render.py from schema/harbours.yaml through Message.h.j2. Do not edit.
#pragma once

#include "RecordMessage.h"
#include "RTCM2_Buoy_Message.h"

// Type 5: Harbour and its buoys.
class VORLO_RTCM2_EXPORT RTCM2_Harbour_Message final :
    public MessageWithSubMessages<RTCM2_Harbour_s, RTCM2_Buoy_Message, &RTCM2_Harbour_s::Buoys, &RTCM2_Harbour_s::Nb> {
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
    bool hasChannel() const { return has(5); }
    uint8_t getChannel() const { return presentValue(5, record().Channel); }
    uint8_t getLength() const { return record().Length; }
    bool hasTitle() const { return has(7); }
    unsigned int getNumberOfTitle() const { return numberOf(member(7)); }
    RTCM2_char getTitle(unsigned int index) const { return elementOf(7, record().Title, index); }
    QVector<RTCM2_char> getTitleVector() const { return elementsOf(7, record().Title); }
    const RTCM2_char* getTitleArray() const { return unchecked()->Title; }
    RTCM2_char* getTitleArray() { return unchecked()->Title; }
    unsigned int getNumberOfNote() const { return numberOf(member(8)); }
    uint8_t getNote(unsigned int index) const { return elementOf(8, record().Note, index); }
    QVector<uint8_t> getNoteVector() const { return elementsOf(8, record().Note); }
    const uint8_t* getNoteArray() const { return unchecked()->Note; }
    uint8_t* getNoteArray() { return unchecked()->Note; }
    uint16_t getNb() const { return record().Nb; }
    unsigned int getNumberOfBuoys() const { return record().Nb; }
    const RTCM2_Buoy_Message* getBuoys(unsigned int index) const { return element(10, index); }
    RTCM2_Buoy_Message* getBuoys(unsigned int index) { return element(10, index); }
    QVector<const RTCM2_Buoy_Message*> getBuoysVector() const { return made().constElements; }
    QVector<RTCM2_Buoy_Message*> getBuoysVector() { return made().elements; }
};
