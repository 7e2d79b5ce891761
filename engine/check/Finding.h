// What is wrong with a stream, and how much it matters.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

enum class Severity : std::uint8_t { good, warning, critical };

// A message of the input.
struct Place {
    std::uint64_t number = 0;    // from 1; 0: no single message
    std::uint64_t byte = 0;
    std::optional<double> time{};              // in seconds of the hour
    std::optional<std::int64_t> received{};    // microseconds since 1970, where that is asked for
    std::int64_t clock = 0;                    // in units of the input's clock
};

struct Finding {
    Severity severity = Severity::warning;
    std::string text;
    Place place{};
};

// Findings as they come: the first ones in full, of the others how many there were.
class Findings {
public:
    void add(Finding problem)
    {
        severity = std::max(severity, problem.severity);
        if (all.size() < room) {
            all.push_back(std::move(problem));
        } else {
            ++others;
        }
    }

    const std::vector<Finding>& kept() const { return all; }
    std::uint64_t notKept() const { return others; }
    Severity worst() const { return severity; }
    void sort()
    {
        std::stable_sort(all.begin(), all.end(), [](const Finding& a, const Finding& b) {
            return a.place.number < b.place.number;
        });
    }

private:
    static constexpr std::size_t room = 1000;

    std::vector<Finding> all;
    std::uint64_t others = 0;
    Severity severity = Severity::good;
};
