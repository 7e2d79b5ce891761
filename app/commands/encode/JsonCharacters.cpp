#include "commands/encode/JsonCharacters.h"

#include "base/InputFile.h"

#include <algorithm>
#include <string_view>

bool JsonCharacters::refill()
{
    if (ended || isTooLong()) {
        return false;
    }
    text.erase(0, mark);
    position -= mark;
    mark = 0;
    const auto bytes = file.read();
    ended = bytes.empty();
    total += bytes.size();
    text.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return !ended;
}

void JsonCharacters::setMark(bool limit)
{
    const std::size_t offset = position - mark;
    const std::uint64_t column = columnAt(offset);
    markLine = lineAt(offset);
    markColumn = column;
    mark = position;
    limited = limit;
}

std::uint64_t JsonCharacters::lineAt(std::size_t offset) const
{
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(mark);
    return markLine + static_cast<std::uint64_t>(
                          std::count(begin, begin + static_cast<std::ptrdiff_t>(offset), '\n'));
}

std::uint64_t JsonCharacters::columnAt(std::size_t offset) const
{
    const std::string_view before = std::string_view(text).substr(mark, offset);
    const std::size_t lineEnd = before.rfind('\n');
    return lineEnd == std::string_view::npos ? markColumn + offset : offset - lineEnd;
}

void JsonCharacters::recover(std::size_t mistake, std::span<const std::size_t> incomplete)
{
    limited = false;
    std::size_t brace = mark;
    while ((brace = text.find("\n{", brace) + 1) != 0 && brace <= mark + mistake) {
        if (std::find(incomplete.begin(), incomplete.end(), brace - mark) == incomplete.end()) {
            position = brace;
            setMark(false);
            return;
        }
    }
    position = mark + mistake;
    do {
        skipLine();
    } while (!isAtEnd() && std::string_view("{[],").find(Peek()) == std::string_view::npos);
}

void JsonCharacters::skipLine()
{
    while (!isAtEnd()) {
        const std::size_t lineEnd = text.find('\n', position);
        position = lineEnd == std::string::npos ? text.size() : lineEnd + 1;
        setMark(false);
        if (lineEnd != std::string::npos) {
            return;
        }
    }
}
