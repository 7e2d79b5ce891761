// The raw text line of a message: the selected fields in order, joined by the host's separator.
#include "FloatRepresentation.h"
#include "RecordMessage.h"
#include "ValueText.h"
#include "record_values.h"

#include <algorithm>

namespace {

void appendBytes(QString& line, const char* bytes, unsigned count)
{
    for (unsigned i = 0; i < count; ++i) {
        if (i > 0 && i % 4 == 0) {
            line += QLatin1Char(' ');
        }
        line += ValueText::hex(static_cast<unsigned char>(bytes[i]));
    }
}

void appendRun(QString& line, const RecordMessage& message, const RTCM2_member_s& run)
{
    const char* const place = rtcm2::placeOf(message.assertedRecord(), run);
    if (run.type == RTCM2_TYPE_CHARACTER) {
        line += ValueText::text(place, std::min(message.numberOf(run), run.limit + 1U));
    } else {
        appendBytes(line, place, std::min<unsigned>(message.numberOf(run), run.limit));
    }
}

void appendArray(QString& line, unsigned count)
{
    for (unsigned i = 0; i < count; ++i) {
        line += i == 0 ? QLatin1String("submsg") : QLatin1String(" submsg");
    }
}

void appendNumber(QString& line, const void* record, const RTCM2_member_s& member)
{
    const qint64 value = rtcm2::integerOf(record, member);
    if (member.has_do_not_use != 0 && value == member.do_not_use && Message::useDoNotUseString) {
        line += Message::doNotUseString;
    } else if (member.type == RTCM2_TYPE_BYTE) {
        line += ValueText::hex(static_cast<unsigned>(value));
    } else if (member.type == RTCM2_TYPE_UNSIGNED) {
        line += QString::number(static_cast<quint64>(value));
    } else {
        line += QString::number(value);
    }
}

void appendField(QString& line, const RecordMessage& message, const RTCM2_member_s& member)
{
    const void* const record = message.assertedRecord();
    if (!rtcm2::isPresent(record, member)) {
        return;
    }
    if (member.role == RTCM2_ROLE_ARRAY) {
        appendArray(line, message.numberOf(member));
    } else if (member.role == RTCM2_ROLE_RUN) {
        appendRun(line, message, member);
    } else if (member.type == RTCM2_TYPE_REAL) {
        const double value = rtcm2::valueAt<double>(rtcm2::placeOf(record, member));
        line += FloatRepresentation::getString(value, 'f', 6, false);
    } else {
        appendNumber(line, record, member);
    }
}

}    // namespace

// An absent optional field leaves its slot empty. The record is asked for with the first field that
// is selected.
QString RecordMessage::getRawStringFor(const QVector<bool>& selection) const
{
    const RTCM2_kind_s& row = kindRow();
    const int fields =
        std::min(static_cast<int>(selection.size()), static_cast<int>(row.member_count));
    QString line;
    bool somethingWritten = false;
    for (int i = 0; i < fields; ++i) {
        if (!selection[i]) {
            continue;
        }
        if (somethingWritten) {
            line += Message::fieldSeparator;
        }
        somethingWritten = true;
        appendField(line, *this, row.members[i]);
    }
    return line;
}
