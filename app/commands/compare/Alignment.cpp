#include "commands/compare/Alignment.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace {

// The indices of all messages, group by group, those of a group in their order.
std::vector<std::uint32_t> groupedIndices(const MessageStore& store)
{
    std::vector<std::uint32_t> indices(store.size());
    std::iota(indices.begin(), indices.end(), 0U);
    std::stable_sort(indices.begin(), indices.end(), [&](std::uint32_t x, std::uint32_t y) {
        return store[x].group < store[y].group;
    });
    return indices;
}

// A signature and the place in a span of indices that has it.
using Signed = std::pair<std::uint64_t, std::uint32_t>;

// Goes through two sorted lists and calls back with the stretches that have the same signature.
template <class Function>
void eachShared(const std::vector<Signed>& a, const std::vector<Signed>& b, Function function)
{
    const auto end = [](const std::vector<Signed>& list, std::size_t at) {
        std::size_t behind = at;
        while (behind < list.size() && list[behind].first == list[at].first) {
            ++behind;
        }
        return behind;
    };
    for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
        if (a[i].first == b[j].first) {
            const std::size_t endA = end(a, i);
            const std::size_t endB = end(b, j);
            function(std::span(a).subspan(i, endA - i), std::span(b).subspan(j, endB - j));
            i = endA;
            j = endB;
        } else {
            ++(a[i].first < b[j].first ? i : j);
        }
    }
}

// The longest row of pairs, which come in the order of a, in which b ascends as well.
std::vector<MessagePair> longestAscent(const std::vector<MessagePair>& pairs)
{
    std::vector<std::uint32_t> ends;    // of the best row of each length, as indices of pairs
    std::vector<std::uint32_t> before(pairs.size());
    for (std::uint32_t i = 0; i < pairs.size(); ++i) {
        const auto place = std::lower_bound(
            ends.begin(), ends.end(), pairs[i].b,
            [&](std::uint32_t end, std::uint32_t value) { return pairs[end].b < value; });
        before[i] = place == ends.begin() ? i : *(place - 1);
        place == ends.end() ? ends.push_back(i) : static_cast<void>(*place = i);
    }
    std::vector<MessagePair> row(ends.size());
    std::uint32_t next = ends.empty() ? 0 : ends.back();
    for (std::size_t left = row.size(); left > 0; --left, next = before[next]) {
        row[left - 1] = pairs[next];
    }
    return row;
}

}    // namespace

Alignment::Alignment(const MessageStore& first, const MessageStore& second)
    : a(first), b(second), takenA(first.size()), takenB(second.size())
{
    const std::vector<std::uint32_t> allA = groupedIndices(a);
    const std::vector<std::uint32_t> allB = groupedIndices(b);
    const auto stretch = [](const MessageStore& store, const std::vector<std::uint32_t>& all,
                            std::size_t begin, const MessageGroup& group) {
        std::size_t end = begin;
        while (end < all.size() && store[all[end]].group == group) {
            ++end;
        }
        return Indices(all).subspan(begin, end - begin);
    };
    for (std::size_t i = 0, j = 0; i < allA.size() && j < allB.size();) {
        const MessageGroup group = std::min(a[allA[i]].group, b[allB[j]].group);
        const Indices inA = stretch(a, allA, i, group);
        const Indices inB = stretch(b, allB, j, group);
        alignGroup(inA, inB);
        i += inA.size();
        j += inB.size();
    }
    keepLonely();
}

void Alignment::alignGroup(Indices inA, Indices inB)
{
    static constexpr Signature levels[] = {&Alignment::content, &Alignment::timeAndSequence,
                                           nullptr};
    const std::size_t begin = matched.size();
    alignBetween(inA, inB, levels);
    std::sort(matched.begin() + static_cast<std::ptrdiff_t>(begin), matched.end(),
              [](const MessagePair& x, const MessagePair& y) { return x.a < y.a; });
}

// What is equal at both ends needs no search.
void Alignment::alignBetween(Indices inA, Indices inB, const Signature* levels)
{
    while (!inA.empty() && !inB.empty() && isEqual(inA.front(), inB.front())) {
        match(inA.front(), inB.front(), true);
        inA = inA.subspan(1);
        inB = inB.subspan(1);
    }
    while (!inA.empty() && !inB.empty() && isEqual(inA.back(), inB.back())) {
        match(inA.back(), inB.back(), true);
        inA = inA.first(inA.size() - 1);
        inB = inB.first(inB.size() - 1);
    }
    if (inA.empty() || inB.empty()) {
        return;
    }
    if (*levels == nullptr) {
        return alignInOrder(inA, inB);
    }
    std::size_t beginA = 0;
    std::size_t beginB = 0;
    for (const MessagePair& anchor : anchors(inA, inB, *levels)) {
        alignBetween(inA.subspan(beginA, anchor.a - beginA), inB.subspan(beginB, anchor.b - beginB),
                     levels + 1);
        match(inA[anchor.a], inB[anchor.b], true);
        beginA = anchor.a + 1;
        beginB = anchor.b + 1;
    }
    alignBetween(inA.subspan(beginA), inB.subspan(beginB), levels + 1);
}

void Alignment::alignInOrder(Indices inA, Indices inB)
{
    matchLeft(inA, inB, &Alignment::timeAndSequence, true);
    matchLeft(inA, inB, &Alignment::time, false);
}

bool Alignment::isEqual(std::uint32_t inA, std::uint32_t inB) const
{
    return a.textOf(inA) == b.textOf(inB);
}

void Alignment::match(std::uint32_t inA, std::uint32_t inB, bool isSame)
{
    takenA[inA] = true;
    takenB[inB] = true;
    matched.push_back({inA, inB, isSame});
}

// Places in the two spans.
std::vector<MessagePair> Alignment::anchors(Indices inA, Indices inB, Signature signature) const
{
    return longestAscent(sharedOnce(inA, inB, signature));
}

std::vector<MessagePair> Alignment::sharedOnce(Indices inA, Indices inB, Signature signature) const
{
    const auto sorted = [&](const MessageStore& store, Indices indices) {
        std::vector<Signed> all;
        all.reserve(indices.size());
        for (std::uint32_t i = 0; i < indices.size(); ++i) {
            all.emplace_back((this->*signature)(store, indices[i]), i);
        }
        std::sort(all.begin(), all.end());
        return all;
    };
    std::vector<MessagePair> pairs;
    eachShared(sorted(a, inA), sorted(b, inB), [&](auto sharedA, auto sharedB) {
        if (sharedA.size() == 1 && sharedB.size() == 1) {
            pairs.push_back({sharedA.front().second, sharedB.front().second, true});
        }
    });
    std::sort(pairs.begin(), pairs.end(),
              [](const MessagePair& x, const MessagePair& y) { return x.a < y.a; });
    return pairs;
}

// The first of a signature with the first, the second with the second, of those that are left.
void Alignment::matchLeft(Indices inA, Indices inB, Signature signature, bool isSame)
{
    const auto left = [&](const MessageStore& store, const std::vector<bool>& taken,
                          Indices indices) {
        std::vector<Signed> all;
        for (const std::uint32_t index : indices) {
            if (!taken[index]) {
                all.emplace_back((this->*signature)(store, index), index);
            }
        }
        std::sort(all.begin(), all.end());
        return all;
    };
    eachShared(left(a, takenA, inA), left(b, takenB, inB), [&](auto sharedA, auto sharedB) {
        for (std::size_t i = 0; i < std::min(sharedA.size(), sharedB.size()); ++i) {
            match(sharedA[i].second, sharedB[i].second, isSame);
        }
    });
}

void Alignment::keepLonely()
{
    for (const MessagePair& pair : matched) {
        if (!pair.isSame) {
            takenA[pair.a] = false;
            takenB[pair.b] = false;
        }
    }
    const auto lonely = [](const std::vector<bool>& taken) {
        std::vector<std::uint32_t> indices;
        for (std::uint32_t i = 0; i < taken.size(); ++i) {
            if (!taken[i]) {
                indices.push_back(i);
            }
        }
        return indices;
    };
    lonelyA = lonely(takenA);
    lonelyB = lonely(takenB);
}

std::uint64_t Alignment::content(const MessageStore& store, std::uint32_t index) const
{
    return std::hash<std::string_view>()(store.textOf(index));
}

std::uint64_t Alignment::timeAndSequence(const MessageStore& store, std::uint32_t index) const
{
    return std::uint64_t{store[index].time} << 8 | store[index].sequence;
}

std::uint64_t Alignment::time(const MessageStore& store, std::uint32_t index) const
{
    return store[index].time;
}
