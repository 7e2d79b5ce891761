#include "viewer/plots/PointTable.h"

#include "base/Text.h"
#include "format/FieldText.h"
#include "pictures/Axis.h"

#include <charconv>

namespace {

constexpr std::size_t bytesAtOnce = std::size_t{1} << 16;

// As exports of messages have it. False where the record has no value.
bool appendNumber(Text& text, const FieldModel& field, const void* record)
{
    if (!field.isPresent(record)) {
        return false;
    }
    if (field.isQuantity()) {
        return appendQuantity(text, field, record);
    }
    if (field.isReal()) {
        char digits[32];
        const double value = RTCM2_reader_real(&field.reader, record);
        text.append({digits, std::to_chars(digits, digits + sizeof digits, value).ptr});
    } else {
        text.append(std::to_string(RTCM2_reader_integer(&field.reader, record, 0)));
    }
    return true;
}

class Rows {
public:
    Rows(const PointTable& whichTable, const FieldReading& whatIsRead)
        : table(whichTable), hasSenders(whatIsRead.times.hasSenders()),
          clock(0, false, whatIsRead.times.range().value_or(Range{0, 1}))
    {
    }

    void appendHeader(Text& text) const
    {
        text.append("No.,Byte,Time,Station,");
        text.append(hasSenders ? "MMSI," : "");
        text.append(table.keyName.empty() ? "" : table.keyName + ",");
        text.append(table.valueName + "\n");
    }

    void append(Text& text, const Found& found, std::size_t place, const IndexEntry& entry,
                double seconds) const
    {
        const std::string begin = std::to_string(place + 1) + "," + std::to_string(found.begin) +
                                  "," + clock.text(seconds) + "," + std::to_string(entry.station) +
                                  "," + (hasSenders ? std::to_string(entry.mmsi) + "," : "");
        for (const FollowedFields& fields : table.fields) {
            if (fields.kind == found.kind) {
                fields.values.front().anyRecord(found.record, [&](const void* record) {
                    appendRow(text, begin, fields, record);
                    return false;
                });
            }
        }
    }

private:
    static void appendRow(Text& text, const std::string& begin, const FollowedFields& fields,
                          const void* record)
    {
        const std::size_t before = text.size();
        text.append(begin);
        if (fields.key.field != nullptr) {
            appendNumber(text, fields.key.last(), record);
            text.append(',');
        }
        if (appendNumber(text, fields.values.front().last(), record)) {
            text.append('\n');
        } else {
            text.cut(before);
        }
    }

    const PointTable& table;
    bool hasSenders;
    TimeScale clock;
};

}    // namespace

std::string PointTable::write(const FieldReading& reading, const FieldReading::Stop& isAskedToStop,
                              std::atomic<double>& done, Output& out) const
{
    const Rows rows(*this, reading);
    Text text;
    rows.appendHeader(text);
    const auto take = [&](const Found& found, std::size_t place, double seconds) {
        rows.append(text, found, place, reading.index[place], seconds);
        if (text.size() >= bytesAtOnce) {
            out.write(text.view());
            text.clear();
        }
    };
    const std::string problem = reading.read(
        take, [&] { return isAskedToStop() || out.failed(); }, done);
    out.write(text.view());
    return problem;
}
