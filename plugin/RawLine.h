// The raw text line of a message: the selected fields in order, joined by the host's separator.
#pragma once

#include <QString>
#include <QVector>

class RecordMessage;

// An absent optional field leaves its slot empty. The record is asked for with the first field that
// is selected.
QString rawLineOf(const RecordMessage& message, const QVector<bool>& selection);
