#include "forms/Detector.h"

#include "forms/AisWitness.h"
#include "forms/HexWitness.h"
#include "forms/StreamWitness.h"
#include "forms/UnitWitness.h"

#include <algorithm>

namespace {

// Looked at at once, as long as nothing is certain.
constexpr std::size_t pieceBytes = 4096;

std::string counted(std::uint64_t count, const char* what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}    // namespace

struct Detector::Looks {
    // At one place where several are certain at once, the first one counts.
    StreamWitness stream;
    HexWitness hex;
    AisWitness ais;
    UnitWitness wordsWithParity{recordedUnitsWithParity};
    UnitWitness packed{packedUnits};
    UnitWitness words{recordedUnits};
    std::array<Witness*, 6> witnesses{&stream, &hex, &ais, &wordsWithParity, &packed, &words};
    OtherFormats others;
};

Detector::Detector() : looks(std::make_unique<Looks>()) {}

Detector::~Detector() = default;

void Detector::look(std::span<const std::uint8_t> seen)
{
    while (found == nullptr && lookedAt < seen.size()) {
        const auto piece = seen.first(std::min(seen.size(), lookedAt + pieceBytes));
        const bool hadChecksums = hasChecksums();
        lookAt(piece);
        const bool mayBeCertain = std::any_of(
            looks->witnesses.begin(), looks->witnesses.end(), [&](const Witness* witness) {
                return witness->isCertain() && (witness->vouches() || !hadChecksums);
            });
        if (mayBeCertain) {
            lookAgain(piece);
        }
        lookedAt = piece.size();
    }
}

void Detector::lookAt(std::span<const std::uint8_t> seen)
{
    for (Witness* const witness : looks->witnesses) {
        witness->look(seen);
    }
    looks->others.look(seen);
}

// Byte by byte through the last piece, to see what was certain first.
void Detector::lookAgain(std::span<const std::uint8_t> seen)
{
    looks = std::make_unique<Looks>();
    lookAt(seen.first(lookedAt));
    for (std::size_t size = lookedAt + 1; found == nullptr && size <= seen.size(); ++size) {
        lookAt(seen.first(size));
        found = certainOne();
    }
}

const Witness* Detector::certainOne() const
{
    for (Witness* const witness : looks->witnesses) {
        if (witness->isCertain() && (witness->vouches() || !hasChecksums())) {
            return witness;
        }
    }
    return nullptr;
}

void Detector::finish()
{
    if (found != nullptr) {
        return;
    }
    for (Witness* const witness : looks->witnesses) {
        witness->finish();
    }
    found = certainOne();
    decide();
    if (found == nullptr && !hasChecksums()) {
        found = fittingOne();
    }
}

void Detector::decide()
{
    if (found == nullptr && looks->ais.hasSentences()) {
        found = &looks->ais;
    }
}

bool Detector::hasChecksums() const
{
    return looks->others.any() || looks->ais.hasSentences();
}

const Witness* Detector::fittingOne() const
{
    const auto fits = [](const Witness* witness) { return witness->fits(); };
    const auto& all = looks->witnesses;
    return std::count_if(all.begin(), all.end(), fits) == 1
               ? *std::find_if(all.begin(), all.end(), fits)
               : nullptr;
}

std::string Detector::problem() const
{
    if (found != nullptr || lookedAt == 0) {
        return {};
    }
    const std::string bytes = counted(lookedAt, "byte");
    if (looks->others.any()) {
        return "it looks like " + looks->others.description() + ", which is not read (in " + bytes +
               ")";
    }
    unsigned messages = 0;
    for (Witness* const witness : looks->witnesses) {
        messages = std::max(messages, witness->messages());
    }
    if (messages > 1) {
        return "unsure of its form: in " + bytes + ", no more than " +
               counted(messages, "message") + " in a row, and those without parity";
    }
    return "unsure of its form: no certain message in " + bytes;
}
