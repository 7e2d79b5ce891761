#include "sources/ChunkedBody.h"

#include <algorithm>

namespace {

constexpr unsigned mostDigits = 8;
constexpr std::size_t longestText = 8192;    // that is no data, between two chunks

// 16 for what is none.
unsigned digitOf(std::uint8_t byte)
{
    return byte >= '0' && byte <= '9'   ? byte - '0'
           : byte >= 'a' && byte <= 'f' ? byte - 'a' + 10U
           : byte >= 'A' && byte <= 'F' ? byte - 'A' + 10U
                                        : 16;
}

}    // namespace

bool ChunkedBody::push(std::span<const std::uint8_t> bytes, std::vector<std::uint8_t>& data)
{
    while (!bytes.empty() && problemText.empty() && !isAtEnd()) {
        if (place == Place::data) {
            const std::size_t count = std::min<std::uint64_t>(left, bytes.size());
            data.insert(data.end(), bytes.begin(), bytes.begin() + static_cast<long>(count));
            left -= count;
            bytes = bytes.subspan(count);
            place = left == 0 ? Place::dataEnd : place;
        } else {
            take(bytes.front());
            bytes = bytes.subspan(1);
        }
    }
    return problemText.empty() && !isAtEnd();
}

void ChunkedBody::require(bool holds, Place next)
{
    if (!holds) {
        problemText = "what the caster sends breaks the rules of chunks";
    }
    place = next;
}

void ChunkedBody::take(std::uint8_t byte)
{
    switch (place) {
    case Place::size:
        takeSize(byte);
        break;
    case Place::extension:
        require(++lineBytes < longestText && byte != '\n',
                byte == '\r' ? Place::sizeEnd : Place::extension);
        break;
    case Place::sizeEnd:
        require(byte == '\n', left > 0 ? Place::data : Place::trailer);
        lineBytes = 0;
        break;
    case Place::dataEnd:
        require(byte == '\r', Place::dataLineEnd);
        break;
    case Place::dataLineEnd:
        require(byte == '\n', Place::size);
        digits = 0;
        break;
    case Place::trailer:
    case Place::trailerEnd:
        takeTrailer(byte);
        break;
    case Place::data:
    case Place::end:
        break;
    }
}

void ChunkedBody::takeSize(std::uint8_t byte)
{
    const unsigned digit = digitOf(byte);
    if (digit < 16) {
        require(++digits <= mostDigits, Place::size);
        left = left * 16 + digit;    // 0 behind each chunk
        return;
    }
    const bool isEnd = byte == '\r' || byte == ';' || byte == ' ' || byte == '\t';
    require(digits > 0 && isEnd, byte == '\r' ? Place::sizeEnd : Place::extension);
}

// Lines up to an empty one.
void ChunkedBody::takeTrailer(std::uint8_t byte)
{
    if (place == Place::trailerEnd) {
        require(byte == '\n', isEmptyLine ? Place::end : Place::trailer);
        isEmptyLine = true;
        return;
    }
    require(++lineBytes < longestText && byte != '\n',
            byte == '\r' ? Place::trailerEnd : Place::trailer);
    isEmptyLine = isEmptyLine && byte == '\r';
}
