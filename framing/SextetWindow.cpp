#include "framing/SextetWindow.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace framing {
namespace {

constexpr std::uint64_t eachByte(std::uint64_t byte)
{
    return byte * 0x0101010101010101U;
}

// Of eight bytes, how many at the front have the form 01xxxxxx.
unsigned leadingSextets(std::uint64_t bytes)
{
    const std::uint64_t wrong = (bytes ^ eachByte(0x40)) & eachByte(0xC0);
    return static_cast<unsigned>(std::countl_zero(wrong)) / 8;
}

std::uint64_t reverseEachByte(std::uint64_t bytes)
{
    bytes = (bytes >> 1 & eachByte(0x55)) | (bytes & eachByte(0x55)) << 1;
    bytes = (bytes >> 2 & eachByte(0x33)) | (bytes & eachByte(0x33)) << 2;
    return (bytes >> 4 & eachByte(0x0F)) | (bytes & eachByte(0x0F)) << 4;
}

// The six low bits of eight bytes, each byte's least significant bit first, in the upper 48 bits.
// Neighbours are joined in pairs: 6 to 12 bits, 12 to 24, 24 to 48.
std::uint64_t joinSextets(std::uint64_t bytes)
{
    const std::uint64_t six = reverseEachByte(bytes) >> 2;
    const std::uint64_t twelve = (six & 0x3F003F003F003F00U) >> 2 | (six & 0x003F003F003F003FU);
    const std::uint64_t twentyFour =
        (twelve & 0x0FFF00000FFF0000U) >> 4 | (twelve & 0x00000FFF00000FFFU);
    return (twentyFour >> 32) << 40 | (twentyFour & 0xFFFFFF) << 16;
}

// The upper `used` bits of a byte, left-aligned.
std::uint64_t lastBits(std::uint8_t byte, unsigned used)
{
    return static_cast<std::uint64_t>(byte) << 56 & ~(~std::uint64_t{0} >> used);
}

}    // namespace

SextetWindow::SextetWindow(std::uint64_t firstByte) : bytesTaken_(firstByte)
{
    runs_.reserve(capacitySextets + 1);
}

std::size_t SextetWindow::append(std::span<const std::uint8_t> bytes)
{
    const std::uint64_t before = bytesTaken_;
    while (!bytes.empty() && hasRoom()) {
        const std::size_t inGroups = inGap_ ? 0 : appendGroups(bytes);
        const std::size_t taken = inGroups > 0 ? inGroups : appendPart(bytes);
        bytesTaken_ += taken;
        bytes = bytes.subspan(taken);
    }
    return bytesTaken_ - before;
}

// Takes the groups of eight sextets at the front of `bytes`, in a loop that touches no members.
std::size_t SextetWindow::appendGroups(std::span<const std::uint8_t> bytes)
{
    const std::uint64_t index = endBit_ - base_;
    const std::size_t groups =
        std::min<std::size_t>(bytes.size() / groupBytes, (capacityBits - index) / bitsPerGroup);
    const unsigned used = index % 8;    // the same for all groups: six bytes each
    std::uint8_t* out = &bits_[index / 8];
    std::uint64_t kept = lastBits(*out, used);
    std::size_t group = 0;
    for (; group < groups; ++group) {
        const std::uint64_t value = loadBig(&bytes[group * groupBytes]);
        if (leadingSextets(value) < groupBytes) {
            break;
        }
        const std::uint64_t joined = kept | joinSextets(value) >> used;
        storeBig(out, joined);
        out += bitsPerGroup / 8;
        kept = joined << bitsPerGroup;
    }
    endBit_ += group * bitsPerGroup;
    return group * groupBytes;
}

// Takes up to eight sextets at the front of `bytes`, or skips one byte that is none.
std::size_t SextetWindow::appendPart(std::span<const std::uint8_t> bytes)
{
    std::array<std::uint8_t, groupBytes> group{};    // beyond the end zeros, which are no sextets
    std::memcpy(group.data(), bytes.data(), std::min<std::size_t>(bytes.size(), groupBytes));
    const std::uint64_t value = loadBig(group.data());
    const unsigned sextets = leadingSextets(value);
    if (sextets == 0) {
        gap_ = inGap_ ? gap_ : Gap();
        gap_.add(bytes.front());
        inGap_ = true;
        return 1;
    }
    if (inGap_) {
        runs_.push_back({sextetsTaken(), bytesTaken_, gap_});
        inGap_ = false;
    }
    putSextets(joinSextets(value), sextets);
    return sextets;
}

// Appends the first `count` sextets of a group; the bits behind them must be zeros.
void SextetWindow::putSextets(std::uint64_t joined, unsigned count)
{
    const std::uint64_t index = endBit_ - base_;
    const unsigned used = index % 8;
    std::uint8_t* const out = &bits_[index / 8];
    storeBig(out, lastBits(*out, used) | joined >> used);
    endBit_ += count * bitsPerSextet;
}

void SextetWindow::dropBefore(std::uint64_t bit)
{
    const std::size_t bytes = (std::max(bit, base_) - base_) / 8;
    const std::size_t end = (endBit_ - base_ + 7) / 8;
    std::memmove(bits_.data(), &bits_[bytes], end - bytes);
    base_ += 8 * bytes;

    // The run that covers the first bit left must stay.
    const std::uint64_t sextet = (std::max(base_, firstBit) - firstBit) / bitsPerSextet;
    const auto later = runAfter(sextet);
    if (later != runs_.begin()) {
        runs_.erase(runs_.begin(), later - 1);
    }
}

std::uint64_t SextetWindow::findPreamble(std::uint64_t from) const
{
    constexpr unsigned preambleBits = 8;
    constexpr unsigned placesPerLoad = 57 - preambleBits + 1;
    for (std::uint64_t bit = from; bit + preambleBits <= endBit_; bit += placesPerLoad) {
        // The preamble 01100110 and its inverse are the changes 1010101 from bit to bit.
        const std::uint64_t bits = loadBits(bits_.data(), bit - base_);
        const std::uint64_t change = bits ^ bits << 1;
        const std::uint64_t same = ~change;
        const std::uint64_t found = (change & same << 1 & change << 2 & same << 3 & change << 4 &
                                     same << 5 & change << 6) >>
                                    (64 - placesPerLoad);
        if (found != 0) {
            const auto ahead = static_cast<unsigned>(std::countl_zero(found));
            const std::uint64_t place = bit + ahead - (64 - placesPerLoad);
            if (place + preambleBits <= endBit_) {
                return place;
            }
        }
    }
    return std::max(from, endBit_ - (preambleBits - 1));
}

// The first run that begins behind a sextet.
SextetWindow::Runs::const_iterator SextetWindow::runAfter(std::uint64_t sextet) const
{
    return std::upper_bound(
        runs_.begin(), runs_.end(), sextet,
        [](std::uint64_t wanted, const Run& run) { return wanted < run.sextet; });
}

std::uint8_t SextetWindow::byteOf(std::uint64_t sextet) const
{
    const std::uint64_t bits = loadBits(bits_.data(), firstBit + sextet * bitsPerSextet - base_);
    return static_cast<std::uint8_t>(0x40 | (reverseEachByte(bits) >> 56 & 0x3F));
}

TextLine SextetWindow::textBehind(std::uint64_t bit, bool inputEnded) const
{
    TextLine line((bit - firstBit + bitsPerSextet - 1) / bitsPerSextet);
    const std::uint64_t taken = sextetsTaken();
    auto run = runAfter(line.begin());
    if (run != runs_.begin() && (run - 1)->sextet == line.begin()) {
        line.beginBehind((run - 1)->before);
    }
    while (line.isOpen() && line.end() < taken) {
        if (run != runs_.end() && run->sextet == line.end()) {
            line.add((run++)->before);
        } else {
            line.add(byteOf(line.end()));
        }
    }
    if (line.isOpen() && inGap_) {
        line.add(gap_);
    }
    if (line.isOpen() && inputEnded) {
        line.endHere();
    }
    return line;
}

void SextetWindow::cut(const TextLine& line)
{
    const std::uint64_t removed = line.end() - line.begin();
    const std::uint64_t taken = sextetsTaken();
    const auto before = bits_;
    endBit_ = firstBit + line.begin() * bitsPerSextet;
    for (std::uint64_t sextet = line.end(); sextet < taken; ++sextet) {
        const std::uint64_t bits =
            loadBits(before.data(), firstBit + sextet * bitsPerSextet - base_);
        putSextets(bits & ~(~std::uint64_t{0} >> bitsPerSextet), 1);
    }
    const auto firstIn =
        std::lower_bound(runs_.begin(), runs_.end(), line.begin(),
                         [](const Run& run, std::uint64_t wanted) { return run.sextet < wanted; });
    const auto firstBehind =
        std::lower_bound(firstIn, runs_.end(), line.end(),
                         [](const Run& run, std::uint64_t wanted) { return run.sextet < wanted; });
    for (Run& run : std::span(firstBehind, runs_.end())) {
        run.sextet -= removed;
    }
    runs_.erase(firstIn, firstBehind);
}

std::uint64_t SextetWindow::byteOffsetOf(std::uint64_t bit) const
{
    const std::uint64_t sextet = (bit - firstBit) / bitsPerSextet;
    const Run& run = *(runAfter(sextet) - 1);
    return run.offset + (sextet - run.sextet);
}

}    // namespace framing
