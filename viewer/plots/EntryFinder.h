// Which entry of an index is what was found on a second reading.
#pragma once

#include "viewer/document/MessageIndex.h"

#include <optional>

// Asked for one after another, in the order of the input; some may have been left out.
class EntryFinder {
public:
    // Between two places, the second one past the last.
    EntryFinder(const MessageIndex& read, std::size_t from, std::size_t until)
        : index(read), next(from), end(until)
    {
    }

    // Nothing where the input is not what it was.
    std::optional<std::size_t> placeOf(const Found& found)
    {
        while (next < end && index[next].begin + outOfOrder < found.begin) {
            ++next;
        }
        for (std::size_t place = next;
             place < end && index[place].begin <= found.begin + outOfOrder; ++place) {
            if (index[place].begin == found.begin && index[place].kindOfFind() == found.what) {
                next = place + 1;
                return place;
            }
        }
        return std::nullopt;
    }

private:
    // Bytes: parts of a message may be mixed with those of others.
    static constexpr std::uint64_t outOfOrder = 1 << 14;

    const MessageIndex& index;
    std::size_t next;
    std::size_t end;
};
