#include "support/SlowFramer.h"

#include <algorithm>
#include <optional>

namespace slow {
namespace {

// How much speaks for words that are all good, by what stands behind them.
enum Support { none, otherWords, nothing, otherStation, sameStation };

struct Bit {
    bool on;
    std::size_t byte;
};

unsigned valueOf(const Bytes& packed, std::size_t firstBit, unsigned width)
{
    unsigned value = 0;
    for (std::size_t i = firstBit; i < firstBit + width; ++i) {
        value = value * 2 + (packed[i / 8] >> (7 - i % 8) & 1);
    }
    return value;
}
unsigned stationOf(const Bytes& packed)
{
    return valueOf(packed, 14, 10);
}
std::size_t bitsOf(const Bytes& packed)
{
    return 30 * (2 + valueOf(packed, 40, 5));
}

bool comesAfter(const Bytes& later, const Bytes& earlier)
{
    const unsigned wait = (valueOf(later, 24, 13) + 6000 - valueOf(earlier, 24, 13)) % 6000;
    const unsigned numbers = (valueOf(later, 37, 3) + 8 - valueOf(earlier, 37, 3)) % 8;
    return stationOf(later) == stationOf(earlier) && wait < 50 && numbers > 0 && numbers <= 4;
}

class Slow {
public:
    explicit Slow(const Bytes& input) : input_(input)
    {
        for (std::size_t byte = 0; byte < input.size(); ++byte) {
            for (unsigned i = 0; i < 6 && input[byte] >> 6 == 1; ++i) {
                bits_.push_back({(input[byte] >> i & 1) != 0, byte});
            }
        }
    }

    Framed run()
    {
        while (at_ + 30 <= bits_.size()) {
            look();
        }
        const std::size_t outside = outside_ + bits_.size() - lastEnd_;
        return {frames_, input_.size() - bits_.size() / 6, outside};
    }

private:
    unsigned number(std::size_t from, unsigned width) const
    {
        unsigned value = 0;
        for (std::size_t i = from; i < from + width; ++i) {
            value = value * 2 + (bits_[i].on ? 1 : 0);
        }
        return value;
    }

    // The data of the word at `at` if it is good behind these two bits.
    std::optional<unsigned> dataBehind(std::size_t at, bool d29, bool d30) const
    {
        const unsigned data = number(at, 24) ^ (d30 ? 0xFFFFFF : 0);
        const bool good = number(at + 24, 6) == referenceParity(data, d29, d30);
        return good ? std::optional(data) : std::nullopt;
    }
    std::optional<unsigned> data(std::size_t at) const
    {
        return dataBehind(at, at > 1 && bits_[at - 2].on, at > 0 && bits_[at - 1].on);
    }
    std::optional<unsigned> firstData(std::size_t at) const
    {
        for (const int before : {0, 1, 2, 3}) {
            const auto found = dataBehind(at, before > 1, before % 2 == 1);
            if (found && *found >> 16 == 0x66) {
                return found;
            }
        }
        return std::nullopt;
    }

    // The good words from `at` on, at most those that the header declares.
    Bytes wordsAt(std::size_t at, std::optional<unsigned> first) const
    {
        Bytes packed;
        std::size_t end = at + 60;
        for (std::size_t bit = at; bit < end && bit + 30 <= bits_.size(); bit += 30) {
            const auto word = bit == at ? first : data(bit);
            if (!word) {
                break;
            }
            for (const unsigned shift : {16U, 8U, 0U}) {
                packed.push_back(static_cast<std::uint8_t>(*word >> shift));
            }
            end = packed.size() == 6 ? at + bitsOf(packed) : end;
        }
        return packed;
    }
    static bool isWhole(const Bytes& packed)
    {
        return packed.size() >= 6 && packed[0] == 0x66 && packed.size() * 10 == bitsOf(packed);
    }
    Bytes inside(std::size_t at) const
    {
        return at + 30 <= bits_.size() ? wordsAt(at, data(at)) : Bytes();
    }

    Support supportAt(std::size_t at, unsigned station) const
    {
        const auto word = at + 30 <= bits_.size() ? data(at) : std::nullopt;
        if (!word) {
            return nothing;
        }
        if (*word >> 16 == 0x66) {
            return (*word & 0x3FF) == station ? sameStation : otherStation;
        }
        return at + 60 <= bits_.size() && !data(at + 30) ? nothing : otherWords;
    }

    // Of messages end to end from `at` to `end` or beyond. Tells where they end.
    Support supportOfChain(std::size_t at, std::size_t end, unsigned station, bool isFirst,
                           std::size_t& chainEnd) const
    {
        chainEnd = at;
        if (at >= end) {
            return supportAt(at, station);
        }
        const Bytes packed = inside(at);
        const bool header = packed.size() >= 6 && packed[0] == 0x66;
        if (header && !isFirst && stationOf(packed) == station) {
            return sameStation;
        }
        if (!isWhole(packed)) {
            return none;
        }
        return supportOfChain(at + bitsOf(packed), end, stationOf(packed), false, chainEnd);
    }

    void look()
    {
        const auto first = firstData(at_);
        if (!first && !expected_) {
            ++at_;
        } else if (!first && !cutText()) {
            const bool preamble =
                (number(at_, 8) ^ (at_ > 0 && bits_[at_ - 1].on ? 0xFF : 0)) == 0x66;
            tell(preamble ? "bad parity in word 1" : "no preamble where a message had to begin",
                 at_ + 30, {});
            at_ = lastBegin_ + 1;
            expected_ = false;
        } else if (first) {
            judge(wordsAt(at_, first));
        }
    }

    void judge(const Bytes& packed)
    {
        const std::size_t good = packed.size() * 10;
        const bool tells = expected_ || (good >= 60 && at_ >= lastEnd_);
        if (isWhole(packed)) {
            weigh(packed);
            return;
        }
        const bool broken = at_ + good + 30 <= bits_.size();
        if (tells && broken) {
            tell("bad parity in word " + std::to_string(good / 30 + 1), at_ + good + 30, packed);
            markDamaged(packed);
        } else if (tells && !cutOff_) {
            tell("cut off", bits_.size(), packed);
            cutOff_ = true;
        }
        moveOn();
    }

    void weigh(const Bytes& packed)
    {
        const std::size_t end = at_ + packed.size() * 10;
        const bool ofLast = !last_.empty() && stationOf(packed) == stationOf(last_);
        const bool likely = expected_ || at_ == 0 || at_ == damagedEnd_ || ofLast;
        std::size_t chainEnd = 0;
        if (at_ < lastEnd_ && !(ofLast && end > lastEnd_) &&
            supportOfChain(end, lastEnd_, stationOf(packed), true, chainEnd) < otherStation) {
            moveOn();
        } else if (!isDoubtful(packed, likely)) {
            accept(packed);
        } else if (!likely && supportAt(end, stationOf(packed)) == otherWords) {
            moveOn();
        } else if (!hasBetter(packed, likely)) {
            accept(packed);
        } else {
            if (likely && (expected_ || at_ >= lastEnd_)) {
                tell("its words do not belong together", end, packed);
                markDamaged(packed);
            }
            moveOn();
        }
    }

    bool isDoubtful(const Bytes& packed, bool likely) const
    {
        bool doubtful = !likely;
        for (std::size_t i = 3; i < packed.size(); i += 3) {
            const unsigned station = (packed[i + 1] & 3U) * 256 + packed[i + 2];
            const bool known =
                station == stationOf(packed) || (!last_.empty() && station == stationOf(last_));
            doubtful |= packed[i] == 0x66 && known;
        }
        return doubtful;
    }

    bool hasBetter(const Bytes& packed, bool likely) const
    {
        const std::size_t end = at_ + packed.size() * 10;
        const Support own = supportAt(end, stationOf(packed));
        for (std::size_t bit = at_ + 30; bit < end; bit += 30) {
            const Bytes other = inside(bit);
            if (other[0] != 0x66) {
                continue;
            }
            const auto follows = [&](const Bytes& earlier) {
                return other.size() >= 6 && !earlier.empty() && comesAfter(other, earlier);
            };
            std::size_t chainEnd = 0;
            const Support support = supportOfChain(bit, end, 0, true, chainEnd);
            const bool next = follows(packed) || follows(last_);
            if (support <= otherWords) {
                if (next && own <= nothing) {
                    return true;
                }
                continue;
            }
            const bool stronger = support > own && !(likely && own == otherStation && !next);
            const bool sameEnd = chainEnd == end && (next || !likely);
            if (stronger || (support >= own && sameEnd)) {
                return true;
            }
        }
        return false;
    }

    void accept(const Bytes& packed)
    {
        const std::size_t end = at_ + packed.size() * 10;
        tell("message", end, packed);
        outside_ += at_ > lastEnd_ ? at_ - lastEnd_ : 0;
        lastBegin_ = at_;
        at_ = lastEnd_ = end;
        last_ = packed;
        expected_ = true;
    }

    void markDamaged(const Bytes& packed)
    {
        if (packed.size() >= 6 && at_ >= damagedEnd_) {
            damagedEnd_ = at_ + bitsOf(packed);
        }
    }

    void moveOn()
    {
        ++at_;
        expected_ = false;
    }

    void tell(const std::string& verdict, std::size_t end, const Bytes& packed)
    {
        frames_.push_back({verdict, bits_[at_].byte, bits_[end - 1].byte + 1, packed});
    }

    // Where a message had to begin: takes a line of text out of the bits, if there is one.
    bool cutText()
    {
        std::size_t from = std::max(bits_[at_ - 1].byte + 1, textEnd_);
        std::size_t letters = from;    // where the first one stands
        while (letters < input_.size() && input_[letters] >> 6 != 1) {
            ++letters;
        }
        for (std::size_t i = from; i < letters; ++i) {
            from = input_[i] == '\r' || input_[i] == '\n' ? i + 1 : from;
        }
        const Bytes lead(input_.begin() + static_cast<std::ptrdiff_t>(from),
                         input_.begin() + static_cast<std::ptrdiff_t>(letters));
        const std::size_t end = lineEnd(letters, lead);
        std::erase_if(bits_, [&](const Bit& bit) { return bit.byte >= letters && bit.byte < end; });
        textEnd_ = std::max(textEnd_, end);
        return end > 0;
    }

    static bool isText(std::uint8_t byte) { return byte >> 5 == 1 || byte == '\t'; }

    // One past the line of text whose first letter stands at `at`, behind `lead`; 0: it is none.
    std::size_t lineEnd(std::size_t at, const Bytes& lead) const
    {
        const bool sentence = std::count(lead.begin(), lead.end(), '$') > 0 ||
                              std::count(lead.begin(), lead.end(), '!') > 0;
        int pieces = std::any_of(lead.begin(), lead.end(), isText) ? 1 : 0;
        bool onlyLetters = true;
        bool inPiece = false;
        for (int letters = 0; at < input_.size() && input_[at] != '\r' && input_[at] != '\n';
             ++at) {
            const std::uint8_t byte = input_[at];
            if (byte >> 6 == 1) {
                inPiece = false;
                onlyLetters &= (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
                if (++letters > 200 || !(onlyLetters || (sentence && byte != 0x7F))) {
                    return 0;
                }
            } else if (!isText(byte)) {
                return 0;
            } else {
                pieces += inPiece ? 0 : 1;
                inPiece = true;
            }
        }
        return pieces >= (onlyLetters ? 1 : 3) ? at : 0;
    }

    const Bytes& input_;
    std::vector<Bit> bits_;
    std::vector<Frame> frames_;
    std::size_t at_ = 0;
    bool expected_ = false;
    bool cutOff_ = false;
    Bytes last_;
    std::size_t lastBegin_ = 0;
    std::size_t lastEnd_ = 0;
    std::size_t damagedEnd_ = 0;
    std::size_t textEnd_ = 0;
    std::size_t outside_ = 0;
};

}    // namespace

Framed frame(const Bytes& input)
{
    return Slow(input).run();
}

}    // namespace slow
