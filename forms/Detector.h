// Finds out which form an input has.
#pragma once

#include "forms/OtherFormats.h"
#include "forms/Witness.h"

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <string>

// Parity decides, or a checksum: the form of which first something is certain is taken, and forms
// without either only where no message with a good checksum, of any format, was seen before. Where
// there was nothing but sentences of AIS, that is the form, with messages still to come. At the end
// of the input, a form without parity is taken, too, that fits the whole of it, if no other does.
//
// What is found out depends on the bytes alone, not on how many of them come at once.
class Detector {
public:
    Detector();
    ~Detector();

    // Looks at all bytes from the input's first one on; each time there are some more.
    void look(std::span<const std::uint8_t> seen);

    // The input has ended.
    void finish();

    // More of the input will not be looked at.
    void decide();

    // Of the form that was found; null as long as none is.
    const Witness* winner() const { return found; }

    // What the bytes looked like where no form was found, for people.
    std::string problem() const;

private:
    struct Looks;

    void lookAt(std::span<const std::uint8_t> seen);
    void lookAgain(std::span<const std::uint8_t> seen);
    const Witness* certainOne() const;
    const Witness* fittingOne() const;
    bool hasChecksums() const;

    std::unique_ptr<Looks> looks;
    std::size_t lookedAt = 0;
    const Witness* found = nullptr;
};
