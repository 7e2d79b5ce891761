// How many things there were when.
#pragma once

#include "pictures/Axis.h"
#include "pictures/Bins.h"

#include <cmath>
#include <cstdint>
#include <vector>

class Density {
public:
    struct Bin {
        std::uint64_t count = 0;
        double first = 0;

        void merge(const Bin& later)
        {
            first = count == 0 ? later.first : first;
            count += later.count;
        }
    };

    void add(double x)
    {
        Bin& bin = bins.at(x);
        bin.first = bin.count == 0 ? x : bin.first;
        ++bin.count;
        ++all;
    }
    std::uint64_t count() const { return all; }

    // As up to so many columns of equal width through the range, without those that are empty. Each
    // holds the same number of bins, so that none is higher than others only for where it lies.
    struct Column {
        double begin = 0;
        double width = 0;
        Bin bin{};
    };
    std::vector<Column> columns(const Range& range, std::size_t wanted) const
    {
        const double needed = range.length() / bins.binWidth() / static_cast<double>(wanted);
        const auto together = std::max<std::size_t>(1, static_cast<std::size_t>(std::ceil(needed)));
        const double width = bins.binWidth() * static_cast<double>(together);
        std::vector<Column> result;
        for (std::size_t i = 0; i < bins.all().size(); ++i) {
            const Bin& bin = bins.all()[i];
            const double begin = bins.beginOf(i - i % together);
            if (bin.count == 0) {
                continue;
            }
            if (!result.empty() && result.back().begin == begin) {
                result.back().bin.merge(bin);
            } else {
                result.push_back({begin, width, bin});
            }
        }
        return result;
    }

private:
    static constexpr std::size_t mostBins = 2048;
    static constexpr double narrowest = 1.0 / 64;    // seconds

    Bins<Bin> bins{mostBins, narrowest};
    std::uint64_t all = 0;
};
