#include "forms/AisSentence.h"

#include <algorithm>
#include <charconv>

namespace {

bool isLetter(char character)
{
    return character >= 'A' && character <= 'Z';
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

// Takes a field of no or one character and the comma behind it; 0 for none.
bool takeCharacter(std::string_view& text, char& character)
{
    const std::size_t comma = text.substr(0, 2).find(',');
    if (comma == text.npos || (comma == 1 && !isDigit(text[0]) && !isLetter(text[0]))) {
        return false;
    }
    character = comma == 0 ? '\0' : text[0];
    text.remove_prefix(comma + 1);
    return true;
}

// Payload and fill bits, which stand between the head and the checksum.
void readContent(AisSentence& sentence, std::string_view content)
{
    const std::size_t comma = content.find(',');
    const std::string_view fill = comma == content.npos ? "?" : content.substr(comma + 1);
    sentence.payload = content.substr(0, comma);
    if (fill.size() > 1 || (!fill.empty() && (fill[0] < '0' || fill[0] > '5'))) {
        sentence.problem = "its sentence does not say how many fill bits it has";
    } else if (!fill.empty()) {
        sentence.fillBits = static_cast<unsigned>(fill[0] - '0');
    }
}

}    // namespace

std::optional<AisSentence> headOfSentence(std::string_view text)
{
    constexpr std::size_t fewest = sizeof "!AIVDM,1,1,,," - 1;
    if (text.size() < fewest || text[0] != '!' || !isLetter(text[1]) || !isLetter(text[2]) ||
        text[3] != 'V' || text[4] != 'D' || (text[5] != 'M' && text[5] != 'O') || text[6] != ',') {
        return std::nullopt;
    }
    const bool hasNumbers =
        isDigit(text[7]) && text[8] == ',' && isDigit(text[9]) && text[10] == ',';
    AisSentence sentence{.address = text.substr(1, 5),
                         .count = static_cast<unsigned>(text[7] - '0'),
                         .number = static_cast<unsigned>(text[9] - '0')};
    if (!hasNumbers || sentence.number == 0 || sentence.number > sentence.count) {
        return std::nullopt;
    }
    sentence.payload = text.substr(11);
    if (!takeCharacter(sentence.payload, sentence.sequence) ||
        !takeCharacter(sentence.payload, sentence.channel)) {
        return std::nullopt;
    }
    return sentence;
}

void readTail(AisSentence& sentence, std::string_view text)
{
    const std::size_t star = text.find('*');
    const int given = star == text.npos ? -1 : checksumAt(text.substr(star + 1));
    sentence.hasChecksum = given >= 0;
    if (!sentence.hasChecksum) {
        sentence.size = text.find_last_not_of(" \t\r\n") + 1;
        sentence.problem = "its sentence has no checksum";
        return;
    }
    sentence.size = star + 3;
    const std::size_t head = text.size() - sentence.payload.size();
    readContent(sentence, text.substr(head, star < head ? 0 : star - head));
    const unsigned right = checksumOf(text.substr(1, star - 1));
    if (static_cast<unsigned>(given) != right) {
        sentence.problem = "its sentence has the checksum " +
                           checksumText(static_cast<unsigned>(given)) + ", and " +
                           checksumText(right) + " would be right";
    }
}

unsigned checksumOf(std::string_view text)
{
    unsigned sum = 0;
    for (const char character : text) {
        sum ^= static_cast<unsigned char>(character);
    }
    return sum;
}

int checksumAt(std::string_view text)
{
    constexpr std::size_t digits = 2;
    int sum = -1;
    const char* const end = text.data() + std::min(text.size(), digits);
    const auto [last, error] = std::from_chars(text.data(), end, sum, 16);
    const bool isWhole =
        text.size() >= digits && error == std::errc() && last == text.data() + digits;
    return isWhole ? sum : -1;
}

std::string checksumText(unsigned sum)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    return {digits[sum >> 4 & 0xF], digits[sum & 0xF]};
}
