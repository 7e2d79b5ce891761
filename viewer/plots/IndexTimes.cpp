#include "viewer/plots/IndexTimes.h"

#include <algorithm>

void IndexTimes::update()
{
    const std::size_t size = index.size();
    for (; known < size; ++known) {
        if (known % blockSize == 0) {
            blocks.push_back({.before = last});
        }
        add(index[known]);
    }
}

void IndexTimes::add(const IndexEntry& entry)
{
    if (entry.type != latestType && entry.type != IndexEntry::none) {
        latestType = entry.type;
        typesSeen.insert(entry.type);
    }
    senders = senders || entry.mmsi != 0;
    const std::optional<double> own = timeOf(entry);
    last = own ? own : last;
    if (!last) {
        return;
    }
    Block& block = blocks.back();
    block.times = block.hasTimes
                      ? Range{std::min(block.times.low, *last), std::max(block.times.high, *last)}
                      : Range{*last, *last};
    block.hasTimes = true;
    whole = whole ? Range{std::min(whole->low, *last), std::max(whole->high, *last)}
                  : Range{*last, *last};
}

IndexTimes::Places IndexTimes::placesIn(const Range& range, std::size_t from) const
{
    Places places{known, 0};
    each(range, from, [&](std::size_t place, double) {
        places.from = std::min(places.from, place);
        places.until = place + 1;
        return true;
    });
    return places.until == 0 ? Places{} : places;
}

std::optional<double> IndexTimes::timeAt(std::size_t place) const
{
    if (place >= known) {
        return std::nullopt;
    }
    std::size_t at = place;
    const std::size_t begin = place / blockSize * blockSize;
    while (at > begin && !timeOf(index[at])) {
        --at;
    }
    const std::optional<double> own = timeOf(index[at]);
    return own ? own : blocks[place / blockSize].before;
}
