#include "viewer/panes/BitSelection.h"

#include "format/PackedText.h"
#include "viewer/panes/FieldCells.h"

#include <QStringList>

#include <algorithm>

namespace {

constexpr int dataBits = RTCM2_WORD_DATA_BITS;

bool bitIn(const std::vector<std::uint8_t>& packed, std::uint32_t bit)
{
    return (packed[bit / 8] >> (7 - bit % 8) & 1) != 0;
}

QString rangeText(const BitRange& range)
{
    return range.count == 1 ? QObject::tr("Bit %1").arg(range.first)
                            : QObject::tr("Bits %1 to %2 (%3)")
                                  .arg(range.first)
                                  .arg(range.end() - 1)
                                  .arg(range.count);
}

}    // namespace

void BitSelection::setMessage(const MessageDetail* shown, std::vector<AirWord> sentWords)
{
    detail = shown;
    bitMap = shown != nullptr ? BitMap(*shown) : BitMap();
    airWords = std::move(sentWords);
    setField({});
}

void BitSelection::setField(const FieldPlace& place)
{
    chosen = place;
    lit = bitMap.bitsOf(place);
    current = lit.count > 0 ? WordBit::ofPacked(lit.first) : WordBit();
    anchor = current;
    parity = {};
    Q_EMIT changed();
}

void BitSelection::moveTo(WordBit bit, bool isMarking)
{
    current = bit;
    if (isMarking && !anchor.isNone()) {
        mark();
    } else {
        anchor = bit;
        chooseFieldOf(bit);
    }
    Q_EMIT changed();
    Q_EMIT fieldFound(chosen);
    Q_EMIT bitsFound(lit);
}

// A parity bit is no field's.
void BitSelection::chooseFieldOf(WordBit bit)
{
    parity = bit.isParity() ? bit : WordBit();
    chosen = bit.isParity() ? FieldPlace() : bitMap.at(bit.packed());
    lit = bitMap.bitsOf(chosen);
    if (lit.count == 0 && !bit.isParity()) {
        lit = {bit.packed(), 1};
    }
}

// From the anchor to where the cursor is; parity bits between them are left out.
void BitSelection::mark()
{
    const auto [low, high] = std::minmax(anchor, current);
    const std::uint32_t first = WordBit{low.word, std::min(low.bit, dataBits)}.packed();
    const std::uint32_t end = WordBit{high.word, std::min(high.bit + 1, dataBits)}.packed();
    parity = {};
    lit = {first, end - first};
    chosen = current.isParity() ? chosen : bitMap.at(current.packed());
}

bool BitSelection::isLit(WordBit bit) const
{
    if (!parity.isNone()) {
        return bit == parity || isSummed(bit);
    }
    return !bit.isParity() && lit.holds(bit.packed());
}

// Whether a bit enters the sum that the parity bit is: parity is a sum, so that it does if a word
// of this bit alone gives the parity bit.
bool BitSelection::isSummed(WordBit bit) const
{
    const std::uint32_t word = 1U << (WordBit::perWord - 1 - bit.bit);
    std::uint32_t sum = 0;
    if (bit.word == parity.word) {
        sum = RTCM2_word_parity(word >> RTCM2_WORD_PARITY_BITS, 0);
    } else if (bit.word == parity.word - 1) {
        sum = RTCM2_word_parity(0, word & 3);
    }
    return (sum >> (WordBit::perWord - 1 - parity.bit) & 1) != 0;
}

QString BitSelection::description() const
{
    if (!parity.isNone()) {
        return parityText(parity) + tr(", the sum of the bits that are lit up");
    }
    if (detail == nullptr || (lit.count == 0 && chosen.isNone())) {
        return tr("No bits are chosen");
    }
    if (lit.count == 0) {
        return tr("%1: no bits of its own").arg(nameOf(*detail, chosen));
    }
    if (lit == bitMap.bitsOf(chosen)) {
        const FieldSpot spot = spotOf(*detail, chosen);
        const QString value = valueOf(spot);
        return rangeText(lit) + (isDerived(spot) ? tr(" make ") : QStringLiteral(": ")) +
               nameOf(*detail, chosen) + (value.isEmpty() ? value : QStringLiteral(": ") + value);
    }
    return rangeText(lit) + QStringLiteral(": ") + fieldsIn(lit);
}

QString BitSelection::about(WordBit bit) const
{
    QString text = bit.isParity() ? parityText(bit) : dataText(bit.packed());
    if (static_cast<std::size_t>(bit.word) >= airWords.size()) {
        return text;
    }
    const AirWord& word = airWords[static_cast<std::size_t>(bit.word)];
    const auto sent = static_cast<std::size_t>(bit.bit) + word.bit;
    const AirByte& carrier = word.carriers.at(sent / RTCM2_STREAM_BYTE_BITS);
    return text + tr("\nWord %1, bit %2; bit %3 of byte %4, 0x%5")
                      .arg(bit.word + 1)
                      .arg(bit.bit + 1)
                      .arg(sent % RTCM2_STREAM_BYTE_BITS + 1)
                      .arg(carrier.position)
                      .arg(carrier.value, 2, 16, QLatin1Char('0'));
}

QString BitSelection::bitText() const
{
    QString text;
    const BitRange range = copied();
    for (std::uint32_t bit = range.first; bit < range.end(); ++bit) {
        text += bitIn(detail->packed, bit) ? '1' : '0';
    }
    return text;
}

QString BitSelection::hexText() const
{
    const BitRange range = copied();
    std::vector<std::uint8_t> bytes((range.count + 7) / 8);
    for (std::uint32_t i = 0; i < range.count; ++i) {
        const std::uint32_t weight = range.count - 1 - i;
        const bool isSet = bitIn(detail->packed, range.first + i);
        bytes[bytes.size() - 1 - weight / 8] |= static_cast<std::uint8_t>(isSet << weight % 8);
    }
    std::string text;
    appendHex(text, bytes);
    return QString::fromStdString(text);
}

// The fields of the bits in their order, at most a few of them.
QString BitSelection::fieldsIn(const BitRange& range) const
{
    constexpr int most = 4;
    QStringList names;
    FieldPlace last;
    for (std::uint32_t bit = range.first; bit < range.end(); ++bit) {
        const FieldPlace place = bitMap.at(bit);
        if (bit > range.first && place == last) {
            continue;
        }
        last = place;
        if (names.size() == most) {
            return names.join(QStringLiteral(", ")) + tr(" and others");
        }
        names += !place.isNone()        ? nameOf(*detail, place)
                 : bitMap.isFill(bit)   ? tr("fill")
                 : bit >= bitMap.size() ? tr("of a word that failed")
                                        : tr("content that is not decoded");
    }
    return names.join(QStringLiteral(", "));
}

QString BitSelection::dataText(std::uint32_t bit) const
{
    const FieldPlace place = bitMap.at(bit);
    QString text = tr("Bit %1: ").arg(bit) + fieldsIn({bit, 1});
    if (place.isNone()) {
        return text;
    }
    const FieldSpot spot = spotOf(*detail, place);
    const std::uint32_t inField = bit - bitMap.bitsOf(place).first;
    return text + (spot.field->isRepeated()
                       ? QStringLiteral(", ") + valueInRun(spot, inField / spot.field->row->bits)
                       : QStringLiteral(": ") + valueOf(spot));
}

QString BitSelection::parityText(WordBit bit) const
{
    const bool isGood = airWords[static_cast<std::size_t>(bit.word)].goodParity;
    return tr("Parity bit %1 of word %2 (%3)")
        .arg(bit.bit - RTCM2_WORD_DATA_BITS + 1)
        .arg(bit.word + 1)
        .arg(isGood ? tr("good parity") : tr("bad parity"));
}

BitRange BitSelection::copied() const
{
    const BitRange wanted = lit.count > 0 ? lit : BitRange{0, bitMap.size()};
    const std::uint32_t end = std::min(wanted.end(), bitMap.size());
    return {wanted.first, std::max(end, wanted.first) - wanted.first};
}

// Compiled here instead of on its own.
#include "moc_BitSelection.cpp"
