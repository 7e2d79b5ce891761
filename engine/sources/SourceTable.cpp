#include "sources/SourceTable.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace {

// The first field of a line, which ends at the semicolon behind it; one that has semicolons in it
// stands in quotes.
std::string takeField(std::string_view& line)
{
    const bool isQuoted = line.substr(0, 1) == "\"" && line.find('"', 1) != std::string_view::npos;
    const std::size_t end = line.find(';', isQuoted ? line.find('"', 1) : 0);
    std::string_view field = line.substr(0, end);
    line.remove_prefix(std::min(line.size(), field.size() + 1));
    if (isQuoted) {
        field = field.substr(1, field.find('"', 1) - 1);
    }
    return std::string(field);
}

std::optional<CasterStream> streamOf(std::string_view line)
{
    if (takeField(line) != "STR") {
        return std::nullopt;
    }
    CasterStream stream;
    std::string skipped;
    for (std::string* field :
         {&stream.mountpoint, &stream.place, &stream.format, &stream.details, &skipped,
          &stream.systems, &skipped, &skipped, &stream.latitude, &stream.longitude, &skipped,
          &skipped, &skipped, &skipped, &stream.authentication, &stream.fee}) {
        *field = takeField(line);
    }
    return stream.mountpoint.empty() ? std::nullopt : std::optional(stream);
}

}    // namespace

bool CasterStream::isReadable() const
{
    std::string plain;
    for (const char c : format) {
        if (c != ' ') {
            plain += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
    }
    return plain.find("RTCM2") != std::string::npos;
}

std::vector<CasterStream> casterStreams(std::string_view table)
{
    std::vector<CasterStream> streams;
    while (!table.empty()) {
        std::string_view line = table.substr(0, table.find('\n'));
        table.remove_prefix(std::min(table.size(), line.size() + 1));
        line = line.substr(0, line.find('\r'));
        if (auto stream = streamOf(line)) {
            streams.push_back(std::move(*stream));
        }
    }
    return streams;
}
