// The options that say what streams should be.
#pragma once

#include "check/Wanted.h"
#include "filter/MessageFilter.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

struct WantedOptions {
    std::vector<std::string> expected;
    std::string position;
    double tolerance = 1;

    // --expect, --position, --tolerance, and the --station and --mmsi of the filter.
    void declare(CLI::App& command, FilterOptions& filter);

    // Throws UsageError. `withTimes`: places with the time at which they were received.
    Wanted wanted(const FormatModel& model, const FilterOptions& filter, bool withTimes) const;
};
