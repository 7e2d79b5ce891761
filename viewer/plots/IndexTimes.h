// When the messages of an index were sent, so that those of a time are found without looking at all
// of them.
#pragma once

#include "viewer/document/MessageIndex.h"

#include "pictures/Axis.h"

#include <optional>
#include <set>
#include <vector>

// What tells no time has that of the message before it. Times are in seconds of the index's clock.
class IndexTimes {
public:
    explicit IndexTimes(const MessageIndex& read) : index(read) {}

    // Looks at what has come since the last time.
    void update();

    // How many places of the index were looked at.
    std::size_t size() const { return known; }
    // Nothing as long as no message has told a time.
    const std::optional<Range>& range() const { return whole; }
    const std::set<std::uint16_t>& types() const { return typesSeen; }
    // Whether messages have a sender by AIS.
    bool hasSenders() const { return senders; }

    // Calls back with the place of each message of the range and its time, in their order, until
    // the answer is false. Begins at a place.
    template <class Function>
    void each(const Range& range, std::size_t from, Function function) const;
    // The places from the first to one past the last one of the range, from one on.
    struct Places {
        std::size_t from = 0;
        std::size_t until = 0;
    };
    Places placesIn(const Range& range, std::size_t from = 0) const;
    std::optional<double> timeAt(std::size_t place) const;

private:
    static constexpr std::size_t blockSize = 4096;

    struct Block {
        std::optional<double> before{};    // the time that the block begins with
        Range times{};
        bool hasTimes = false;
    };

    static std::optional<double> timeOf(const IndexEntry& entry)
    {
        return entry.sent == IndexEntry::notSent
                   ? std::nullopt
                   : std::optional(static_cast<double>(entry.sent) / 1e6);
    }
    void add(const IndexEntry& entry);

    const MessageIndex& index;
    std::size_t known = 0;
    std::optional<double> last;
    std::optional<Range> whole;
    std::set<std::uint16_t> typesSeen;
    bool senders = false;
    std::uint16_t latestType = IndexEntry::none;
    std::vector<Block> blocks;
};

template <class Function>
void IndexTimes::each(const Range& range, std::size_t from, Function function) const
{
    for (std::size_t number = from / blockSize; number < blocks.size(); ++number) {
        const Block& block = blocks[number];
        if (!block.hasTimes || block.times.high < range.low || block.times.low > range.high) {
            continue;
        }
        std::optional<double> time = block.before;
        const std::size_t end = std::min(known, (number + 1) * blockSize);
        for (std::size_t place = number * blockSize; place < end; ++place) {
            const std::optional<double> own = timeOf(index[place]);
            time = own ? own : time;
            if (place >= from && time && *time >= range.low && *time <= range.high &&
                !function(place, *time)) {
                return;
            }
        }
    }
}
