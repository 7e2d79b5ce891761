#include "commands/encode/JsonInput.h"

#include "base/InputFile.h"
#include "commands/encode/ObjectEnd.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>

#include <algorithm>
#include <limits>

namespace {

constexpr unsigned parseFlags =
    rapidjson::kParseValidateEncodingFlag | rapidjson::kParseFullPrecisionFlag;
constexpr std::uint64_t anywhere = std::numeric_limits<std::uint64_t>::max();

bool isBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

}    // namespace

void JsonInput::Place::pass(std::string_view characters)
{
    for (std::size_t lineEnd; (lineEnd = characters.find('\n')) != std::string_view::npos;) {
        ++line;
        column = 1;
        characters.remove_prefix(lineEnd + 1);
    }
    column += characters.size();
}

bool JsonInput::next()
{
    problemText.clear();
    document.SetNull();
    pool.Clear();
    if (findObject()) {
        parse();
        return true;
    }
    return !problemText.empty();
}

// Whether there is a character at `at`. Reads on for it.
bool JsonInput::hasMore()
{
    if (at == text.size() && !ended) {
        text.erase(0, begin);
        dropped += begin;
        at -= begin;
        begin = 0;
        const auto bytes = file.read();
        ended = bytes.empty();
        text.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    return at < text.size();
}

// What stands before is not needed any more.
void JsonInput::goTo(std::size_t target)
{
    place.pass(std::string_view(text).substr(begin, target - begin));
    begin = at = target;
}

// Goes to the brace of the next object. False at the end and at a mistake.
bool JsonInput::findObject()
{
    for (; hasMore(); goTo(at + 1)) {
        beginLine = place.line;
        if (text[at] == '{') {
            return true;
        }
        if (!isBlank(text[at]) && !isPunctuation(text[at])) {
            complain(place, "no JSON object begins here");
            goOn(anywhere, anywhere);
            return false;
        }
    }
    if (array == Array::inside) {
        array = Array::outside;
        complain(place, "the input ends inside an array");
    }
    return false;
}

bool JsonInput::isPunctuation(char character)
{
    const Array before = array;
    switch (character) {
    case '[':
        array = Array::inside;
        return before != Array::inside;
    case ']':
        array = Array::outside;
        return before != Array::outside;
    default:
        return character == ',' && before != Array::outside;
    }
}

// Goes behind the object's last bracket, or says why there is none and goes to where that is seen.
const char* JsonInput::findEnd()
{
    ObjectEnd end(deepest);
    while (hasMore()) {
        at += end.take(std::string_view(text).substr(at, begin + longest - at));
        if (end.isReached() || end.problem() != nullptr) {
            return end.problem();
        }
        if (at - begin == longest) {
            return "an object of more than 1048576 bytes";
        }
    }
    return "the input ends inside an object";
}

void JsonInput::parse()
{
    const char* reason = findEnd();
    const std::string_view piece = std::string_view(text).substr(begin, at - begin);
    rapidjson::MemoryStream stream(piece.data(), piece.size());
    document.ParseStream<parseFlags>(stream);
    if (!document.HasParseError()) {
        goTo(at);
        return;
    }
    const std::size_t mistake = std::min(document.GetErrorOffset(), piece.size());
    const std::uint64_t end = reason == nullptr ? position() : anywhere;
    if (reason == nullptr || mistake < piece.size()) {
        reason = rapidjson::GetParseError_En(document.GetParseError());
    }
    Place where = place;
    where.pass(piece.substr(0, mistake));
    complain(where, reason);
    at = begin;
    goOn(place.column, end);
}

void JsonInput::complain(Place where, std::string_view reason)
{
    problemText =
        "line " + std::to_string(where.line) + ", column " + std::to_string(where.column) + ": ";
    problemText += reason;
}

// Goes to the next line that begins with a bracket in this column or before, or to the end of a
// whole object.
void JsonInput::goOn(std::uint64_t column, std::uint64_t end)
{
    array = Array::unknown;
    const auto isDone = [&] {
        const bool isOpening = text[at] == '{' || text[at] == '[';
        return position() >= end || (isOpening && place.column <= column);
    };
    do {
        skipLine(end);
        while (hasMore() && position() < end && (isBlank(text[at]) || text[at] == ',')) {
            goTo(at + 1);
        }
    } while (hasMore() && !isDone());
}

void JsonInput::skipLine(std::uint64_t end)
{
    bool isSkipped = false;
    while (!isSkipped && position() < end && hasMore()) {
        const std::string_view rest = std::string_view(text).substr(at, end - position());
        const std::size_t lineEnd = rest.find('\n');
        isSkipped = lineEnd != std::string_view::npos;
        goTo(at + (isSkipped ? lineEnd + 1 : rest.size()));
    }
}
