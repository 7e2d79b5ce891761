// How many bytes a second came lately.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

class RecentRate {
public:
    using Clock = std::chrono::steady_clock;

    void add(Clock::time_point now, std::uint64_t bytes);
    // Over the last seconds before now, as far back as bytes came.
    double perSecond(Clock::time_point now) const;

private:
    // Bytes of each of the last seconds, by the number of the second.
    static constexpr std::size_t seconds = 10;
    struct Second {
        std::int64_t number = 0;
        std::uint64_t bytes = 0;
    };

    static std::int64_t numberOf(Clock::time_point time);

    std::array<Second, seconds> last{};
    std::int64_t first = -1;    // in which something came
};
