// What every benchmark counts beside the time.
#pragma once

#include "Allocations.h"
#include "Workload.h"

#include <benchmark/benchmark.h>

namespace bench {

// Calls `work` with each message in turn, and says what one message took and held. `work` returns a
// number made of what it worked out, so that none of it can be left out.
template <class Work>
void measure(benchmark::State& state, const std::vector<Message>& messages, Work&& work)
{
    std::uint64_t sum = 0;
    const std::uint64_t before = allocations();
    for (auto _ : state) {
        for (const Message& message : messages) {
            sum += work(message);
        }
    }
    const auto done =
        static_cast<double>(state.iterations()) * static_cast<double>(messages.size());
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(messages.size()));
    state.counters["words"] = static_cast<double>(messages.front().size()) / 3;
    state.counters["allocations"] = static_cast<double>(allocations() - before) / done;
}

}    // namespace bench
