#include "commands/stats/StatsCollector.h"

void StatsCollector::endOfInput(const std::string& name, const ReaderCounters& counters)
{
    const Stats stats = counter.takeStats(counters);
    writeInput(stats, name, counters);
    all += stats;
    ++inputCount;
}
