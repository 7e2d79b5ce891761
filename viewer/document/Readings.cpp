#include "viewer/document/Readings.h"

#include <utility>

namespace {

constexpr int lookAtReadingsEvery = 50;    // milliseconds

}    // namespace

Readings::Readings(const Document& read) : document(read)
{
    timer.setInterval(lookAtReadingsEvery);
    connect(&timer, &QTimer::timeout, this, &Readings::look);
    // What waited for the end of a live input is decided then.
    connect(&document, &Document::ended, this, [this] {
        if ((inUse != nullptr || next != nullptr) && document.comesSlowly()) {
            begin(filterOptions);
        }
    });
}

// What is not wanted any more ends by itself, while the window goes on.
template <class Reading>
void Readings::retire(std::shared_ptr<Reading>& reading)
{
    if (reading == nullptr) {
        return;
    }
    reading->cancel();
    retired.push_back({[ending = std::move(reading)] { return ending->isFinished(); }});
    timer.start();
}

void Readings::filter(const std::string& where, bool withTroubles)
{
    begin({.where = where, .withTroubles = withTroubles});
}

void Readings::begin(const FilterPass::Options& options)
{
    FilterPass::Options now = options;
    now.follows = document.comesSlowly() && document.isReading();
    auto pass = std::make_shared<FilterPass>(document.format(), document.again(), now);
    filterOptions = options;
    retire(next);
    next = std::move(pass);
    timer.start();
}

void Readings::dropFilter()
{
    endSearch();
    retire(next);
    std::shared_ptr<FilterPass> old = std::exchange(inUse, nullptr);
    Q_EMIT choiceChanged();
    retire(old);
}

void Readings::search(const SearchPass::Options& options)
{
    endSearch();
    searching = std::make_shared<SearchPass>(
        document.format(), document.again(), document.index(),
        inUse != nullptr ? std::shared_ptr<const Selection>(inUse, &inUse->chosen()) : nullptr,
        options);
    timer.start();
}

void Readings::endSearch()
{
    retire(searching);
}

bool Readings::isFiltering() const
{
    return next != nullptr || (inUse != nullptr && !inUse->isFinished());
}

std::uint64_t Readings::bytesFiltered() const
{
    return next != nullptr ? next->bytesRead() : inUse != nullptr ? inUse->bytesRead() : 0;
}

void Readings::look()
{
    lookAtFilter();
    lookAtSearch();
    std::erase_if(retired, [](const Retired& reading) { return reading.isFinished(); });
    if (!isFiltering() && !isSearching() && retired.empty()) {
        timer.stop();
    }
    Q_EMIT went();
}

void Readings::lookAtFilter()
{
    if (next != nullptr && (next->chosen().size() > 0 || next->isFinished())) {
        endSearch();
        std::shared_ptr<FilterPass> old = std::exchange(inUse, std::move(next));
        next = nullptr;
        Q_EMIT choiceChanged();
        retire(old);
    }
}

void Readings::lookAtSearch()
{
    if (isSearching() && searching->isFinished()) {
        const std::optional<std::size_t> place = searching->found();
        searching.reset();
        Q_EMIT searchEnded(place.has_value(), place.value_or(0));
    }
}

// Compiled here instead of on its own.
#include "moc_Readings.cpp"
