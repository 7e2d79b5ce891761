// What a caster sends, whole and in two pieces: the head of its reply, chunks, its source table.
#include "fuzz.h"

#include "sources/ChunkedBody.h"
#include "sources/NtripReply.h"
#include "sources/SourceTable.h"

#include <algorithm>
#include <string_view>

using namespace fuzz;

namespace {

// What a part tells of the head holds for the whole.
void demandSameHead(std::string_view part, std::string_view whole)
{
    const auto early = ntripReply(part, false);
    const auto reply = ntripReply(whole, false);
    promise(5, !early || (reply && early->headBytes == reply->headBytes), "another head later");
    promise(1, !reply || reply->headBytes <= whole.size(), "a head behind the end");
    promise(16, ntripReply(whole, true).has_value(), "no reply when all is there");
    promise(5, mayBeNtripReply(part) || !mayBeNtripReply(whole), "a reply after all");
    const auto before = bytesBeforeData(part);
    promise(5, !before || bytesBeforeData(whole) == before, "data from another place on");
}

void demandSameData(std::span<const std::uint8_t> bytes, std::size_t cut)
{
    ChunkedBody whole;
    Bytes expected;
    whole.push(bytes, expected);
    ChunkedBody parts;
    Bytes data;
    if (parts.push(bytes.first(cut), data)) {
        parts.push(bytes.subspan(cut), data);
    }
    promise(5, data == expected && parts.isAtEnd() == whole.isAtEnd(), "other data in pieces");
    promise(5, parts.problem() == whole.problem(), "another problem in pieces");
    promise(2, data.size() <= bytes.size(), "more data than bytes");
}

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const std::span<const std::uint8_t> bytes(data + 1, size - 1);
    const std::size_t cut = bytes.size() * data[0] / 255;
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    demandSameHead(text.substr(0, cut), text);
    demandSameData(bytes, cut);
    const auto lines = 1 + std::count(text.begin(), text.end(), '\n');
    promise(2, casterStreams(text).size() <= static_cast<std::size_t>(lines), "more than lines");
    return 0;
}
