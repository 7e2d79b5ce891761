// What is shown of a field: the same texts as on the command line.
#pragma once

#include "viewer/panes/FieldPlace.h"

#include <QString>
#include <QVariant>

// "Corrections 3 of 7: PRC", counted from 1.
QString nameOf(const MessageDetail& detail, const FieldPlace& place);

// The value as it is in the message, with its unit: "-412"; of a field that is a quantity this
// without its unit. Elements are counted.
QString numberOf(const FieldSpot& spot);

// What a coded value means: "UDRE Scale Factor = 1"; empty for others.
QString meaningOf(const FieldSpot& spot);

// The quantity with its unit: "-8.24 m"; empty where there is none. Of an element its satellite and
// correction.
QString quantityOf(const FieldSpot& spot);

// All in one: "-412 = -8.24 m".
QString valueOf(const FieldSpot& spot);

// One of the characters or bytes of a run: "character 3 of 12: ö".
QString valueInRun(const FieldSpot& spot, unsigned index);

// Whether it is not in the message, but follows from another field.
bool isDerived(const FieldSpot& spot);

// By what values are sorted: a number, or a text where they are texts; invalid where there is none.
QVariant sortKeyOf(const FieldSpot& spot);

// Whether the field is in the message and means something with the system of its satellites.
bool concernsMessage(const FieldSpot& spot);

// How much the value is a reason to worry: an RTCM2_alarm_enum, or 0.
int alarmOf(const FieldSpot& spot);
