#include "commands/list/StreamsTable.h"

#include "base/Columns.h"
#include "base/PlainText.h"
#include "base/Terminal.h"

#include <algorithm>

namespace {

constexpr std::size_t widestColumn = 40;
constexpr std::size_t columnCount = 10;
using Row = std::vector<std::string>;

Row rowOf(const CasterStream& stream)
{
    Row row = {stream.isReadable() ? "*" : "",
               stream.mountpoint,
               stream.place,
               stream.format,
               stream.details,
               stream.systems,
               stream.latitude,
               stream.longitude,
               stream.authentication,
               stream.fee};
    std::transform(row.begin(), row.end(), row.begin(),
                   [](const std::string& cell) { return printable(cell); });
    return row;
}

std::string lineOf(const Row& row, const std::vector<std::size_t>& widths)
{
    std::string line;
    for (std::size_t i = 0; i < columnCount; ++i) {
        line += (i == 0 ? "" : "  ") + left(row[i], widths[i]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

}    // namespace

std::string streamsTable(const std::vector<CasterStream>& streams)
{
    std::vector<Row> rows = {{"", "Mountpoint", "Place", "Format", "Details", "Systems", "Latitude",
                              "Longitude", "Login", "Fee"}};
    std::transform(streams.begin(), streams.end(), std::back_inserter(rows), rowOf);
    std::vector<std::size_t> widths(columnCount, 1);
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < columnCount; ++i) {
            widths[i] = std::max(widths[i], std::min(row[i].size(), widestColumn));
        }
    }
    // The name of a mountpoint is what people copy.
    for (const Row& row : rows) {
        widths[1] = std::max(widths[1], row[1].size());
    }
    std::string text;
    for (const Row& row : rows) {
        text += lineOf(row, widths);
    }
    const auto readable = std::count_if(streams.begin(), streams.end(),
                                        [](const CasterStream& each) { return each.isReadable(); });
    return text + "\n" + countText(streams.size(), "stream") + "; " + std::to_string(readable) +
           " of RTCM 2, marked with *\n";
}
