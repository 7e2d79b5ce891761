#include "commands/encode/JsonInput.h"

#include "base/InputFile.h"

#include <rapidjson/error/en.h>

#include <algorithm>

namespace {

constexpr unsigned parseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseStopWhenDoneFlag |
                                rapidjson::kParseValidateEncodingFlag;

// Passes everything on to the document, to a depth that no message needs, and remembers where the
// values begin that are not complete.
struct BoundedHandler {
    static constexpr std::size_t deepest = 32;

    rapidjson::Document& target;
    const JsonCharacters& characters;
    std::vector<std::size_t>& open;

    bool begin()
    {
        open.push_back(characters.Tell());
        return open.size() <= deepest;
    }
    bool end()
    {
        open.pop_back();
        return true;
    }

    bool Null() { return target.Null(); }
    bool Bool(bool value) { return target.Bool(value); }
    bool Int(int value) { return target.Int(value); }
    bool Uint(unsigned value) { return target.Uint(value); }
    bool Int64(std::int64_t value) { return target.Int64(value); }
    bool Uint64(std::uint64_t value) { return target.Uint64(value); }
    bool Double(double value) { return target.Double(value); }
    bool RawNumber(const char* text, unsigned size, bool copy)
    {
        return target.RawNumber(text, size, copy);
    }
    bool String(const char* text, unsigned size, bool copy)
    {
        return target.String(text, size, copy);
    }
    bool StartObject() { return begin() && target.StartObject(); }
    bool Key(const char* text, unsigned size, bool copy) { return target.Key(text, size, copy); }
    bool EndObject(unsigned count) { return end() && target.EndObject(count); }
    bool StartArray() { return begin() && target.StartArray(); }
    bool EndArray(unsigned count) { return end() && target.EndArray(count); }
};

bool isSpace(char character)
{
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

}    // namespace

bool JsonInput::next()
{
    problemText.clear();
    document.SetNull();
    pool.Clear();
    if (!findObject()) {
        return !problemText.empty();
    }
    parse();
    return true;
}

// Goes to the brace of the next object. False at the end and at a mistake.
bool JsonInput::findObject()
{
    while (!characters.isAtEnd()) {
        characters.setMark(false);
        beginLine = characters.lineAt(0);
        const char character = characters.Peek();
        if (character == '{') {
            return true;
        }
        const bool isPunctuation =
            character == (inArray ? ']' : '[') || (character == ',' && inArray);
        if (!isPunctuation && !isSpace(character)) {
            complain("no JSON object begins here", 0);
            return false;
        }
        inArray = character == '[' || (inArray && character != ']');
        characters.Take();
    }
    if (inArray) {
        inArray = false;
        characters.setMark(false);
        complain("the input ends inside an array", 0);
    }
    return false;
}

void JsonInput::parse()
{
    characters.setMark(true);
    const auto generate = [this](rapidjson::Document& target) {
        BoundedHandler handler{target, characters, open};
        return !reader.Parse<parseFlags>(characters, handler).IsError();
    };
    document.Populate(generate);
    const rapidjson::ParseErrorCode error = reader.GetParseErrorCode();
    if (error == rapidjson::kParseErrorNone) {
        return;
    }
    std::string reason = rapidjson::GetParseError_En(error);
    if (characters.isTooLong()) {
        reason = "an object of more than " + std::to_string(JsonCharacters::longest) + " bytes";
    } else if (error == rapidjson::kParseErrorTermination) {
        reason = "nested too deeply";
    } else if (characters.isAtEnd()) {
        reason = "the input ends inside an object";
    }
    // What was too deep in these objects may be none too deep in another.
    if (open.size() > BoundedHandler::deepest) {
        open.pop_back();
    }
    complain(reason, std::min(reader.GetErrorOffset(), characters.Tell()));
}

void JsonInput::complain(const std::string& reason, std::size_t offset)
{
    problemText = "line " + std::to_string(characters.lineAt(offset)) + ", column " +
                  std::to_string(characters.columnAt(offset)) + ": " + reason;
    characters.recover(offset, open);
    open.clear();
}
