#include "commands/encode/JsonInput.h"

#include "sources/Source.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>

#include <algorithm>
#include <limits>

namespace {

// Not in full precision, which goes wrong in the library where the digits of a long number, rounded
// up, become 2 to the 64th. The numbers that are no integers have few digits.
constexpr unsigned parseFlags = rapidjson::kParseValidateEncodingFlag;
constexpr std::uint64_t anywhere = std::numeric_limits<std::uint64_t>::max();

bool isBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

bool isOpening(char character)
{
    return character == '{' || character == '[';
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
// Looks at strings and brackets only. A line end is a control character, too, so no string goes on
// in the next line.
const char* JsonInput::findEnd()
{
    std::string closing;    // the brackets that are still to come, the next one last
    bool inString = false;
    bool escaped = false;
    for (; at - begin < longest && hasMore(); ++at) {
        const char character = text[at];
        if (inString) {
            if (static_cast<unsigned char>(character) < 0x20) {
                return "a control character in a string; \\u and its number can stand for it";
            }
            inString = character != '"' || escaped;
            escaped = character == '\\' && !escaped;
        } else if (character == '"') {
            inString = true;
        } else if (isOpening(character)) {
            if (closing.size() == deepest) {
                return "nested too deeply";
            }
            closing.push_back(character == '{' ? '}' : ']');
        } else if (character == '}' || character == ']') {
            if (closing.back() != character) {
                return "another bracket than the one that was opened";
            }
            closing.pop_back();
            if (closing.empty()) {
                ++at;
                return nullptr;
            }
        }
    }
    return at - begin == longest ? "an object of more than 1048576 bytes"
                                 : "the input ends inside an object";
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
    const std::uint64_t end = reason == nullptr ? dropped + at : anywhere;
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
    bool lineBegins = false;
    for (; dropped + at < end && hasMore(); goTo(at + 1)) {
        if (lineBegins && isOpening(text[at]) && place.column <= column) {
            return;
        }
        lineBegins = text[at] == '\n' || (lineBegins && (isBlank(text[at]) || text[at] == ','));
    }
}
