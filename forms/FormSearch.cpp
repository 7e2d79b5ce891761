#include "forms/FormSearch.h"

#include <algorithm>

std::span<const std::uint8_t> FormSearch::look(std::span<const std::uint8_t> bytes)
{
    const std::span<const std::uint8_t> wanted =
        bytes.first(std::min(bytes.size(), longestLook - kept.size()));
    kept.insert(kept.end(), wanted.begin(), wanted.end());
    detector.look(kept);
    done = detector.winner() != nullptr || kept.size() == longestLook;
    if (done) {
        detector.decide();
    }
    return bytes.subspan(wanted.size());
}

void FormSearch::finish()
{
    detector.finish();
    done = true;
}

Certainty FormSearch::certainty() const
{
    if (winner() == nullptr) {
        return Certainty::unsure;
    }
    return winner()->vouches() ? Certainty::vouched : Certainty::likely;
}
