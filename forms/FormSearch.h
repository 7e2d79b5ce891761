// Looks at the beginning of an input until its form is found.
#pragma once

#include "forms/Detector.h"

#include <span>
#include <string>
#include <vector>

// Keeps the bytes that it has looked at: the first ones of the input, a megabyte at most.
class FormSearch {
public:
    // Looks at the bytes that come next; gives back those that it does not want.
    std::span<const std::uint8_t> look(std::span<const std::uint8_t> bytes);
    // The input has ended.
    void finish();

    // Whether no more bytes are wanted, since the form is found or will not be.
    bool isDone() const { return done; }
    // Of the form that was found; null where none was.
    const Witness* winner() const { return detector.winner(); }
    Certainty certainty() const;
    // What the bytes looked like where no form was found, for people.
    std::string problem() const { return done ? detector.problem() : std::string(); }
    std::span<const std::uint8_t> seen() const { return kept; }

private:
    static constexpr std::size_t longestLook = 1 << 20;

    Detector detector;
    std::vector<std::uint8_t> kept;
    bool done = false;
};
