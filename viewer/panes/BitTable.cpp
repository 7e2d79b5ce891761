#include "viewer/panes/BitTable.h"

#include "format/PackedText.h"

#include <QStringList>

#include <algorithm>
#include <span>

namespace {

QString hexOf(std::span<const std::uint8_t> bytes)
{
    std::string text;
    for (const std::uint8_t& byte : bytes) {
        text += text.empty() ? "" : " ";
        appendHex(text, {&byte, 1});
    }
    return QString::fromStdString(text);
}

QString noteOf(const AirWord& word)
{
    QStringList notes;
    if (!word.goodParity) {
        notes += QStringLiteral("bad parity");
    }
    if (word.inverted) {
        notes += QStringLiteral("inverted");
    }
    const std::uint64_t last = word.carriers.empty() ? 0 : word.carriers.back().position;
    if (const std::uint64_t between = last + 1 - word.byte; between > word.carriers.size()) {
        notes += QStringLiteral("%1 other bytes inside").arg(between - word.carriers.size());
    }
    return notes.join(QStringLiteral(", "));
}

// All of them where it is not known what stood before the word, null.
std::uint32_t wrongParity(const AirWord& word, const AirWord* before)
{
    constexpr std::uint32_t parityMask = (1U << RTCM2_WORD_PARITY_BITS) - 1;
    if (word.goodParity) {
        return 0;
    }
    return before == nullptr
               ? parityMask
               : (RTCM2_word_parity(word.data, before->received & 3) ^ word.received) & parityMask;
}

// Whether a character of a text begins with the bit.
bool isCharacter(const MessageDetail& detail, const BitMap& map, std::uint32_t bit)
{
    const FieldPlace place = map.at(bit);
    const FieldSpot spot = spotOf(detail, place);
    return spot.field != nullptr && spot.field->isText() &&
           (bit - map.bitsOf(place).first) % spot.field->row->bits == 0;
}

}    // namespace

BitTable packedTable(const MessageDetail& detail, const BitMap& map)
{
    BitTable table;
    const std::span<const std::uint8_t> all(detail.packed);
    for (std::size_t at = 0; at < all.size(); at += RTCM2_PACKED_WORD_BYTES) {
        const auto bytes =
            all.subspan(at, std::min<std::size_t>(RTCM2_PACKED_WORD_BYTES, all.size() - at));
        BitRow& row = table.rows.emplace_back();
        row.byte = QString::number(at);
        row.hex = hexOf(bytes);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            row.bits = row.bits << 8 | bytes[i];
            row.count += 8;
            if (isCharacter(detail, map, static_cast<std::uint32_t>(8 * (at + i)))) {
                row.note += QChar::isPrint(bytes[i]) ? QChar(bytes[i]) : QChar('.');
            }
        }
    }
    return table;
}

BitTable airTable(const std::vector<AirWord>& words)
{
    BitTable table{.rows = {}, .perByte = RTCM2_STREAM_BYTE_BITS};
    const AirWord* before = nullptr;
    for (const AirWord& word : words) {
        std::vector<std::uint8_t> bytes;
        for (const AirByte& carrier : word.carriers) {
            bytes.push_back(carrier.value);
        }
        table.rows.push_back({.byte = QString::number(word.byte),
                              .hex = hexOf(bytes),
                              .note = noteOf(word),
                              .bits = word.received,
                              .count = WordBit::perWord,
                              .phase = static_cast<int>(word.bit),
                              .isInverted = word.inverted,
                              .wrong = wrongParity(word, before)});
        before = &word;
    }
    return table;
}
