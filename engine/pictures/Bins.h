// A range divided into bins of equal width, without knowing ahead how far it goes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

// So many bins at most: where the range needs more, they double their width, and two become one by
// `merge(later)`. Bins of the same width lie at the same places wherever they are.
template <class Bin>
class Bins {
public:
    Bins(std::size_t mostBins, double narrowest) : most(mostBins), width(narrowest) {}

    Bin& at(double x)
    {
        std::int64_t place = placeOf(x);
        if (place == latest) {
            return bins[static_cast<std::size_t>(place - first)];
        }
        while (!bins.empty() && !fits(place)) {
            halve();
            place = placeOf(x);
        }
        reach(place);
        latest = place;
        return bins[static_cast<std::size_t>(place - first)];
    }

    const std::vector<Bin>& all() const { return bins; }
    // Where the index-th bin begins.
    double beginOf(std::size_t index) const
    {
        return static_cast<double>(first + static_cast<std::int64_t>(index)) * width;
    }
    double binWidth() const { return width; }

private:
    // The next integer below.
    std::int64_t placeOf(double x) const
    {
        const double place = x / width;
        const auto towardsZero = static_cast<std::int64_t>(place);
        return towardsZero - (place < static_cast<double>(towardsZero) ? 1 : 0);
    }

    bool fits(std::int64_t place) const
    {
        const auto end = first + static_cast<std::int64_t>(bins.size());
        const std::int64_t length = std::max(place + 1, end) - std::min(place, first);
        return length <= static_cast<std::int64_t>(most);
    }

    void reach(std::int64_t place)
    {
        if (bins.empty()) {
            first = place;
        }
        if (place < first) {
            bins.insert(bins.begin(), static_cast<std::size_t>(first - place), Bin{});
            first = place;
        }
        if (const auto index = static_cast<std::size_t>(place - first); index >= bins.size()) {
            bins.resize(index + 1);
        }
    }

    void halve()
    {
        const std::int64_t half = first >> 1;
        std::vector<Bin> wider;
        for (std::size_t i = 0; i < bins.size(); ++i) {
            const auto place =
                static_cast<std::size_t>(((first + static_cast<std::int64_t>(i)) >> 1) - half);
            if (place == wider.size()) {
                wider.push_back(bins[i]);
            } else {
                wider[place].merge(bins[i]);
            }
        }
        bins = std::move(wider);
        first = half;
        width *= 2;
        latest = none;
    }

    static constexpr std::int64_t none = INT64_MIN;

    std::size_t most;
    double width;
    std::int64_t first = 0;        // place of the first bin
    std::int64_t latest = none;    // of the bin that was asked for last
    std::vector<Bin> bins;
};
